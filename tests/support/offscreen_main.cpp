// main() of the tests that use the toolkit: windows without a screen, in the C locale unless a test
// asks for another.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("LC_ALL", "C.UTF-8");  // the system's reasons in the words that the tests know
  qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
  // What the toolkit remembers of its dialogs is kept apart from the user's own.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QLocale::setDefault(QLocale::c());
  return RUN_ALL_TESTS();
}
