// Writes the pictures of docs/ into the folder named on the command line: the main window in light
// and dark, the case form, the 3D view, the window on uncertainty, the measuring window and the
// help.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>

#include "tests/app/pictured_program.h"

namespace {

void Save(QWidget& window, const QDir& folder, const QString& name, double scale = 1.0) {
  window.activateWindow();
  if (!QTest::qWaitForWindowActive(&window)) GiveUp("does not come to the front:", name);
  QApplication::processEvents();
  QImage image(window.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  window.render(&image);
  const QString file = QStringLiteral("%1-%2.png").arg(name).arg(static_cast<int>(100.0 * scale));
  if (!image.save(folder.filePath(file))) GiveUp("cannot write", folder.filePath(file));
}

void FillForm(MDIForm1& window) {
  window.Change();
  CaseEntries entries = window.CaseForm()->Entries();
  entries.surname = "Surname";
  entries.firstName = "Given";
  entries.sex = Sex::Female;
  entries.hip = HipSide::Left;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = "70";
  entries.comments = "Dysplasia, before osteotomy.\nSecond look at the radiograph of 2026.";
  window.CaseForm()->SetEntries(entries);
}

void SaveForm(MDIForm1& window, const QDir& folder) {
  FillForm(window);
  window.CaseForm()->findChild<QLineEdit*>("Text9")->setFocus();
  Save(*window.CaseForm(), folder, "case-form-light");
}

void SaveHead(MDIForm1& window, const QDir& folder) {
  window.View3D();
  FormGula& head = *window.HeadView();
  for (const char* list : {"Combo1", "Combo2"}) {
    head.findChild<QComboBox*>(list)->setCurrentText("High");
  }
  head.findChild<QCheckBox*>("Check2")->setChecked(true);
  head.findChild<QAbstractButton*>("Command1")->setFocus();
  Save(head, folder, "view-3d-light");
}

void SaveHowSure(MDIForm1& window, const QDir& folder) {
  window.HowSure();
  UncertaintyWindow& sure = *window.SureView();
  for (const auto& [box, u] :
       {std::pair("lizm_u", "0,1"), std::pair("Cizm_u", "0,1"), std::pair("Hizm_u", "0,1"),
        std::pair("thetaCE_u", "2"), std::pair("headRadius_u", "0,05"),
        std::pair("bodyWeight_u", "1"), std::pair("magnification_u", "0,02")}) {
    sure.findChild<QLineEdit*>(box)->setText(u);
  }
  Save(sure, folder, "how-sure-light");
}

QWidget& HelpIn(const QWidgetList& windows) {
  for (QWidget* window : windows) {
    if (window->objectName() == "HelpWindow") return *window;
  }
  GiveUp("not there:", "the help window");
}

void SaveHelp(MDIForm1& window, const QDir& folder) {
  window.Help();
  QWidget& help = HelpIn(QApplication::topLevelWidgets());
  auto* contents = help.findChild<QAbstractItemView*>("helpContents");
  const auto isListed = [&] { return contents->model()->rowCount() > 0; };
  if (!QTest::qWaitFor(isListed)) GiveUp("not listed:", "the help's contents");
  contents->setFocus();
  Save(help, folder, "help-light");
  help.close();
}

void SaveMeasuring(PicturedProgram& program, const QDir& folder) {
  MarkingHand hand = program.OpenPelvis();
  Measuring::MeasuringWindow& measuring = *program.window.Measuring();
  hand.MarkBones();
  hand.MarkBall();
  hand.Type("bodyWeight", "70");
  hand.ShowErrors();
  hand.TypeErrors();
  QApplication::processEvents();
  measuring.findChild<QScrollArea*>()->ensureWidgetVisible(
      measuring.findChild<QWidget*>("picBudget"));
  Save(measuring, folder, "measuring-light");
  measuring.close();
}

void SaveAll(const QDir& folder) {
  PicturedProgram program(QLocale("sl_SI"));
  MDIForm1& window = program.window;
  window.show();
  UseTheme(LightPalette());
  SaveForm(window, folder);
  window.CaseForm()->findChild<QAbstractButton*>("Command1")->click();
  for (const double scale : {1.0, 2.0}) Save(window, folder, "main-window-light", scale);
  SaveHead(window, folder);
  SaveHelp(window, folder);
  SaveHowSure(window, folder);
  SaveMeasuring(program, folder);
  UseTheme(DarkPalette());
  Save(window, folder, "main-window-dark");
}

}  // namespace

int main(int argc, char** argv) {
  return RunPictureProgram(argc, argv, SaveAll);
}
