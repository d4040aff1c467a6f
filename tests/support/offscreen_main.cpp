// main() of the tests that use Qt: windows without a screen, in the C locale unless a test
// asks for another.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("LC_ALL", "C.UTF-8");  // the system's reasons in the words that the tests know
  qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
  // What Qt remembers, of its dialogs for example, is kept apart from the user's own.
  const QTemporaryDir own;
  for (const char* place : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(place, own.path().toLocal8Bit());
  }
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QLocale::setDefault(QLocale::c());
  return RUN_ALL_TESTS();
}
