// Writes the pictures of the help page on measuring into the folder named on the command line: one
// made-up radiograph from opening to results. Each has two pixels in a device-independent one.
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QScrollArea>
#include <QTest>

#include "tests/app/pictured_program.h"

namespace {

using Measuring::MarkKind;

// What a help page has room for beside its contents, in device-independent pixels.
constexpr int kRoom = 440;

class Pictures {
 public:
  explicit Pictures(const QDir& folder) : folder_(folder) {}

  void Save(QWidget& widget, const QString& name) const { Save(widget, widget.rect(), name); }
  void Save(QWidget& widget, const QRect& part, const QString& name) const {
    constexpr double kScale = 2.0;
    constexpr int kSmallestFile = 0;
    QApplication::processEvents();
    QImage image(part.size() * kScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    widget.render(&image, {}, part);
    const QString path = folder_.filePath(QStringLiteral("measuring-%1.png").arg(name));
    if (!image.save(path, "PNG", kSmallestFile)) GiveUp("cannot write", path);
  }

 private:
  QDir folder_;
};

// Large to be marked, as a user has it; for a picture as large as a page has room for, with no more
// around the radiograph than there must be.
void Enlarge(Measuring::MeasuringWindow& measuring) {
  measuring.resize(1320, 960);
  measuring.View().Fit();
  QApplication::processEvents();
}
void Shrink(Measuring::MeasuringWindow& measuring, const Phantom::Picture& pelvis) {
  const QSize view(kRoom, kRoom * pelvis.height / pelvis.width);
  measuring.resize(measuring.size() - measuring.View().size() + view);
  QApplication::processEvents();
}

// As a user sees it while a point of the edge is dragged.
void SaveDrag(Measuring::MeasuringWindow& measuring, MarkingHand& hand, const Pictures& pictures) {
  Measuring::RadiographView& view = measuring.View();
  const Landmarks::PixelPlace point = measuring.Marked()[MarkKind::Head][4];
  for (int notch = 0; notch < 4; ++notch) hand.ZoomInAt(point);
  const QPoint at = hand.At(point);
  QTest::mousePress(&view, Qt::LeftButton, {}, at);
  QTest::mouseMove(&view, at + QPoint(4, -4));
  QTest::mouseMove(&view, at);
  pictures.Save(view, "circle");
  QTest::mouseRelease(&view, Qt::LeftButton, {}, at);
}

void SaveResults(Measuring::MeasuringWindow& measuring, const Pictures& pictures) {
  QApplication::processEvents();
  QWidget& column = *measuring.findChild<QScrollArea*>()->widget();
  const auto place = [&](const char* name) {
    const auto* part = measuring.findChild<QWidget*>(name);
    return QRect(part->mapTo(&column, QPoint(0, 0)), part->size());
  };
  pictures.Save(column, place("tblMeasurements").united(place("tblResults")), "results");
  QRect sure = place("tabs");
  sure.setBottom(place("picBudget").bottom());
  pictures.Save(column, sure, "sure");
}

void Walk(PicturedProgram& program, const Pictures& pictures) {
  MarkingHand hand = program.OpenPelvis();
  Measuring::MeasuringWindow& measuring = *program.window.Measuring();
  const Phantom::Picture& pelvis = program.pelvis;
  Shrink(measuring, pelvis);
  pictures.Save(*measuring.View().parentWidget(), "opened");
  Enlarge(measuring);
  hand.DrawHead(*pelvis.truth.left.head);
  Shrink(measuring, pelvis);
  SaveDrag(measuring, hand, pictures);
  Enlarge(measuring);
  hand.MarkOtherBones();
  hand.MarkBall();
  Shrink(measuring, pelvis);
  pictures.Save(measuring.View(), "marked");
  hand.Type("bodyWeight", "70");
  hand.ShowErrors();
  hand.TypeErrors();
  SaveResults(measuring, pictures);
}

void SaveAll(const QDir& folder) {
  PicturedProgram program(QLocale("en_US"));
  UseTheme(LightPalette());
  Walk(program, Pictures(folder));
}

}  // namespace

int main(int argc, char** argv) {
  return RunPictureProgram(argc, argv, SaveAll);
}
