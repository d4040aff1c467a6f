// main() of the tests that use the toolkit: windows without a screen, in the C locale unless a test
// asks for another.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("LC_ALL", "C.UTF-8");  // the system's reasons in the words that the tests know
  qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QLocale::setDefault(QLocale::c());
  return RUN_ALL_TESTS();
}
