// Writes pictures of the main window, of the 3D view and of the diagram in both forms into the
// folder named on the command line, at 100 % and 200 %, in a light and a dark palette.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QPalette>
#include <QStyleFactory>
#include <cstdio>
#include <cstdlib>

#include "app/main_window.h"

namespace {

void Save(QWidget& widget, const QDir& folder, const QString& name, double scale) {
  QApplication::processEvents();
  QImage image(widget.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  widget.render(&image);
  const QString file = QStringLiteral("%1-%2.png").arg(name).arg(static_cast<int>(100.0 * scale));
  if (!image.save(folder.filePath(file))) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(folder.filePath(file)));
    std::exit(EXIT_FAILURE);
  }
}

void Confirm(MDIForm1& window, CaseEntries::Hip hip, const QString& weight) {
  window.Change();
  CaseEntries entries = window.CaseForm()->Entries();
  entries.surname = "Surname";
  entries.firstName = "Given";
  entries.sex = CaseEntries::Sex::Female;
  entries.hip = hip;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = weight;
  entries.comments = "Dysplasia, before osteotomy.\nSecond look at the radiograph of 2026.";
  window.CaseForm()->SetEntries(entries);
  window.CaseForm()->findChild<QAbstractButton*>("Command1")->click();
}

void SaveAll(const QDir& folder, const QString& theme, double scale) {
  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  MDIForm1 window({messages, files, printers, [] { return QDate(2026, 11, 15); }, QLocale("sl_SI"),
                   QStringList()});
  window.show();
  auto* diagram = window.findChild<QWidget*>("Picture1");
  Confirm(window, CaseEntries::Hip::Right, {});
  if (theme == u"light") Save(*diagram, folder, "diagram-form-l", scale);
  Confirm(window, CaseEntries::Hip::Left, "70");
  if (theme == u"light") Save(*diagram, folder, "diagram-form-d", scale);
  Save(window, folder, "main-window-" + theme, scale);
  if (scale != 1.0) return;  // the head is drawn in the pixels of the screen it is on
  window.View3D();
  for (const char* list : {"Combo1", "Combo2"}) {
    window.HeadView()->findChild<QComboBox*>(list)->setCurrentText("High");
  }
  window.HeadView()->findChild<QCheckBox*>("Check2")->setChecked(true);
  Save(*window.HeadView(), folder, "view-3d-" + theme, scale);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return EXIT_FAILURE;
  }
  const QDir folder(argv[1]);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  for (const double scale : {1.0, 2.0}) SaveAll(folder, "light", scale);
  const QColor ground(0x2b, 0x2d, 0x30);
  QPalette dark(ground, ground);
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
  QApplication::setPalette(dark);
  SaveAll(folder, "dark", 1.0);
  return EXIT_SUCCESS;
}
