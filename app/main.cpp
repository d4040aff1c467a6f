// Start of the windowed program.
#include <QApplication>
#include <QLocale>
#include <QStandardPaths>

#include "app/help_file.h"
#include "app/main_window.h"
#include "app/tool_icons.h"
#include "platform/popup_escape.h"
#include "platform/readable_palette.h"
#include "platform/system_end.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const PopupEscape popupEscape;
  QApplication::setApplicationName(QStringLiteral("telmarion"));
  QApplication::setApplicationVersion(QStringLiteral(TELMARION_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("telmarion"));
  QApplication::setWindowIcon(ApplicationIcon());
  const PaletteKeeper readable;

  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  MDIForm1 window({messages, files, printers, [] { return QDate::currentDate(); },
                   QLocale::system(), HelpFolders(QCoreApplication::applicationDirPath()),
                   QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation),
                   QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                       QStringLiteral("/settings.json")});
  const SystemEnd systemEnd;
  QObject::connect(&systemEnd, &SystemEnd::SessionEnding, &window, &MDIForm1::KeepWork);
  QObject::connect(&systemEnd, &SystemEnd::Ended, &window, [&window](int exitStatus) {
    window.EndForSystem();
    QCoreApplication::exit(exitStatus);
  });
  window.show();
  QMetaObject::invokeMethod(&window, &MDIForm1::OfferKeptWork, Qt::QueuedConnection);
  return QApplication::exec();
}
