// Writes pictures of the case form into the folder named on the command line: with the picture and
// without it, the centre-edge angle in focus, at 100 % and 200 %, and in a dark palette.
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QStyleFactory>
#include <QTest>
#include <cstdio>
#include <cstdlib>

#include "caseform/case_form.h"
#include "platform/message_door.h"

namespace {

void Save(Form1& form, const QDir& folder, const QString& name, double scale) {
  QApplication::processEvents();
  QImage image(form.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  form.render(&image);
  const QString path = folder.filePath(
      QStringLiteral("case-form-%1-%2.png").arg(name).arg(static_cast<int>(100.0 * scale)));
  if (!image.save(path)) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    std::exit(EXIT_FAILURE);
  }
}

void FillPatient(Form1& form) {
  CaseEntries entries = form.Entries();
  entries.surname = "Surname";
  entries.firstName = "Given";
  entries.sex = CaseEntries::Sex::Female;
  entries.hip = CaseEntries::Hip::Left;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = "70";
  entries.comments = "Dysplasia, before osteotomy.\nSecond look at the radiograph of 2026.";
  form.SetEntries(entries);
}

void SaveAll(const QDir& folder, double scale) {
  DialogMessageDoor messages;
  Form1 form(messages, QLocale("sl_SI"));
  form.show();
  if (!QTest::qWaitForWindowActive(&form)) std::exit(EXIT_FAILURE);
  Save(form, folder, "new", scale);
  FillPatient(form);
  form.findChild<QLineEdit*>("Text9")->setFocus();
  Save(form, folder, "angle", scale);
  form.findChild<QPushButton*>("Command3")->click();
  Save(form, folder, "narrow", scale);
}

QPalette DarkPalette() {
  QPalette palette(QColor(0x2b, 0x2d, 0x30), QColor(0x2b, 0x2d, 0x30));
  palette.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
  return palette;
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
  for (const double scale : {1.0, 2.0}) SaveAll(folder, scale);

  QApplication::setPalette(DarkPalette());
  DialogMessageDoor messages;
  Form1 form(messages, QLocale("sl_SI"));
  form.show();
  if (!QTest::qWaitForWindowActive(&form)) return EXIT_FAILURE;
  FillPatient(form);
  form.findChild<QLineEdit*>("Text5")->setFocus();
  Save(form, folder, "dark", 1.0);
  return EXIT_SUCCESS;
}
