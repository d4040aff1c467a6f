// Writes pictures of the 3D view into the folder named on the command line: every resolution with
// and without outlines, a drag, small and wide windows, and a dark palette. The display's scale
// factor is QT_SCALE_FACTOR.
#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStyleFactory>
#include <QTest>
#include <cstdio>
#include <cstdlib>

#include "tests/view3d/head_cases.h"
#include "view3d/head_window.h"

namespace {

class Pictures {
 public:
  explicit Pictures(const QDir& folder) : folder_(folder) {}

  void Save(FormGula& form, const QString& name) const {
    QApplication::processEvents();
    const QString path = folder_.filePath(QStringLiteral("3d-view-%1.png").arg(name));
    if (form.grab().save(path)) return;
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    std::exit(EXIT_FAILURE);
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
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  const Pictures pictures{QDir(argv[1])};
  const CaseRecord record = head_cases::Default(70.0);
  DialogMessageDoor messages;
  SystemFileDialog files;
  FormGula form(
      {record, [&] { return head_cases::PoleText(record); }, messages, files, QLocale::c()});
  form.show();
  if (!QTest::qWaitForWindowActive(&form)) return EXIT_FAILURE;
  pictures.Save(form, "opened");
  SaveResolutions(form, pictures);
  SaveDrag(form, pictures);
  form.resize(form.minimumSizeHint());
  pictures.Save(form, "smallest");
  form.resize(1500, 600);
  pictures.Save(form, "wide");
  QApplication::setPalette(DarkPalette());
  pictures.Save(form, "dark");
  return EXIT_SUCCESS;
}
