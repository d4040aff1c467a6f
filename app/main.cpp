// Start of the windowed program.
#include <QApplication>
#include <QLocale>

#include "app/help_file.h"
#include "app/main_window.h"
#include "app/tool_icons.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("telmarion"));
  QApplication::setApplicationVersion(QStringLiteral(TELMARION_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("telmarion"));
  QApplication::setWindowIcon(ApplicationIcon());

  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  MDIForm1 window({messages, files, printers, [] { return QDate::currentDate(); },
                   QLocale::system(), HelpFolders(QCoreApplication::applicationDirPath())});
  window.show();
  return QApplication::exec();
}
