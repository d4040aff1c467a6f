// Start of the windowed program.
#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QStandardPaths>

#include "app/help_file.h"
#include "app/main_window.h"
#include "app/tool_icons.h"
#include "platform/popup_escape.h"
#include "platform/readable_palette.h"
#include "platform/system_end.h"

namespace {

// The radiograph to measure on; empty without one. Help, version and wrong arguments end the
// program here.
QString RadiographFromArguments(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Hip force and contact stress from a radiograph of the pelvis."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption measure(QStringLiteral("measure"),
                                   QStringLiteral("Open the measuring window on a radiograph."),
                                   QStringLiteral("FILE"));
  parser.addOption(measure);
  parser.process(application);
  return parser.value(measure);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const PopupEscape popupEscape;
  QApplication::setApplicationName(QStringLiteral("telmarion"));
  QApplication::setApplicationVersion(QStringLiteral(TELMARION_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("telmarion"));
  QApplication::setWindowIcon(ApplicationIcon());
  const QString radiograph = RadiographFromArguments(application);
  const PaletteKeeper readable;

  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  MDIForm1 window({messages,
                   files,
                   printers,
                   [] { return QDate::currentDate(); },
                   QLocale::system(),
                   HelpFolders(QCoreApplication::applicationDirPath()),
                   QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation),
                   QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                       QStringLiteral("/settings.json"),
                   {Radiography::FindDecoder(QCoreApplication::applicationDirPath()), {}}});
  const SystemEnd systemEnd;
  QObject::connect(&systemEnd, &SystemEnd::SessionEnding, &window, &MDIForm1::KeepWork);
  QObject::connect(&systemEnd, &SystemEnd::Ended, &window, [&window](int exitStatus) {
    window.EndForSystem();
    QCoreApplication::exit(exitStatus);
  });
  window.show();
  const auto begin = [&window, &radiograph] {
    window.OfferKeptWork();
    if (!radiograph.isEmpty()) window.MeasureOn(radiograph);
  };
  QMetaObject::invokeMethod(&window, begin, Qt::QueuedConnection);
  return QApplication::exec();
}
