// Writes pictures of the 3D view into the folder named on the command line: every resolution with
// and without outlines, a drag, small and wide windows, and a dark palette. The display's scale
// factor is QT_SCALE_FACTOR.
#include <QApplication>
#include <QDir>
#include <QTest>

#include "tests/support/palettes.h"
#include "tests/support/picture_program.h"
#include "tests/view3d/head_cases.h"
#include "view3d/head_window.h"

namespace {

class Pictures {
 public:
  explicit Pictures(const QDir& folder) : folder_(folder) {}

  void Save(FormGula& form, const QString& name) const {
    QApplication::processEvents();
    const QString path = folder_.filePath(QStringLiteral("3d-view-%1.png").arg(name));
    if (!form.grab().save(path)) GiveUp("cannot write", path);
  }

 private:
  QDir folder_;
};

void Choose(FormGula& form, const char* list, int item) {
  auto* box = form.findChild<QComboBox*>(list);
  box->setCurrentIndex(item);
  emit box->activated(item);
}

void SaveResolutions(FormGula& form, const Pictures& pictures) {
  const QStringList names = {"low", "medium", "high", "extra"};
  for (const bool outlines : {false, true}) {
    form.findChild<QCheckBox*>("Check1")->setChecked(outlines);
    form.findChild<QCheckBox*>("Check2")->setChecked(outlines);
    for (int i = 0; i < names.size(); ++i) {
      Choose(form, "Combo1", i);
      Choose(form, "Combo2", i);
      pictures.Save(form, names[i] + (outlines ? "-outlines" : ""));
    }
  }
}

void SaveDrag(FormGula& form, const Pictures& pictures) {
  form.findChild<QCheckBox*>("Check3")->setChecked(true);
  pictures.Save(form, "pole");
  auto* picture = form.findChild<RasterView*>("picTest");
  QTest::mousePress(picture, Qt::LeftButton, {}, {200, 200});
  QTest::mouseMove(picture, {260, 250});
  pictures.Save(form, "drag");
  QTest::mouseRelease(picture, Qt::LeftButton, {}, {260, 250});
  pictures.Save(form, "turned");
}

void SaveAll(const QDir& folder) {
  const Pictures pictures{folder};
  const CaseRecord record = head_cases::Default(70.0);
  DialogMessageDoor messages;
  SystemFileDialog files;
  FormGula form({[&] { return HeadCaseOf(record, head_cases::PoleText(record)); }, messages, files,
                 QLocale::c()});
  form.show();
  if (!QTest::qWaitForWindowActive(&form)) GiveUp("does not come to the front:", "the 3D view");
  pictures.Save(form, "opened");
  SaveResolutions(form, pictures);
  SaveDrag(form, pictures);
  form.resize(form.minimumSizeHint());
  pictures.Save(form, "smallest");
  form.resize(1500, 600);
  pictures.Save(form, "wide");
  QApplication::setPalette(DarkPalette());
  pictures.Save(form, "dark");
}

}  // namespace

int main(int argc, char** argv) {
  return RunPictureProgram(argc, argv, SaveAll);
}
