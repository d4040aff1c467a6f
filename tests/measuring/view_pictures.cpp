// Writes pictures of a made-up radiograph with its marks into the folder named on the command line:
// fitted, at work, a magnified drag, and as it is saved. The display's scale factor is
// QT_SCALE_FACTOR.
#include <QApplication>
#include <QDir>
#include <QTest>

#include "tests/measuring/view_fixture.h"
#include "tests/support/marked_phantom.h"
#include "tests/support/picture_program.h"

namespace {

using namespace Measuring;

CircleOnPicture OnPixels(const Landmarks::Circle& circle, const Landmarks::PixelSpacing& spacing) {
  return {Landmarks::InPixels(circle.centre, spacing), circle.radius / spacing.column,
          circle.radius / spacing.row};
}

void Mark(MarkedView& view, const Phantom::Picture& picture) {
  view.points = DraftOf(picture.truth, picture.spacing).points;
  const auto spacing = picture.spacing;
  view.points[IndexOf(MarkKind::Ball)] = EdgePoints(*picture.truth.ball, spacing, 4);
  view.circles[IndexOf(MarkKind::Head)] = OnPixels(*picture.truth.left.head, spacing);
  view.circles[IndexOf(MarkKind::OtherHead)] = OnPixels(*picture.truth.right.head, spacing);
  view.circles[IndexOf(MarkKind::Ball)] = OnPixels(*picture.truth.ball, spacing);
  view.points[IndexOf(MarkKind::Midline)] = {{900.0, 200.0}, {905.0, 900.0}};
  view.SetCurrent(MarkKind::Head);
  view.ShowMarks(view.points, view.circles);
}

class Pictures {
 public:
  explicit Pictures(const QDir& folder) : folder_(folder) {}
  void Save(const QImage& image, const QString& name) const {
    const QString path = folder_.filePath(QStringLiteral("radiograph-%1.png").arg(name));
    if (!image.save(path)) GiveUp("cannot write", path);
  }
  void Save(QWidget& view, const QString& name) const {
    QApplication::processEvents();
    Save(view.grab().toImage(), name);
  }

 private:
  QDir folder_;
};

void Drag(MarkedView& view, const Pictures& pictures) {
  const auto place = view.PointsOf(MarkKind::Head)[1];
  const QPoint at = PositionOf(view.Transform(), place).toPoint();
  QTest::mousePress(&view, Qt::LeftButton, {}, at);
  QTest::mouseMove(&view, at + QPoint(5, 4));
  pictures.Save(view, "drag");
  QTest::mouseMove(&view, at);
  QTest::mouseRelease(&view, Qt::LeftButton, {}, at);
}

void SaveAll(const QDir& folder) {
  const Pictures pictures(folder);
  Phantom::Setup setup;
  setup.ball = Phantom::Ball();
  const Phantom::Picture picture = Phantom::Render({}, setup);
  const auto file = MakeRadiograph(picture.width, picture.height, [&](int x, int y) {
    return picture.grey[std::size_t(y) * std::size_t(picture.width) + std::size_t(x)];
  });
  MarkedView view;
  view.resize(1200, 900);
  view.SetRadiograph(file, 1.0);
  view.show();
  pictures.Save(view, "empty-marks");
  Mark(view, picture);
  pictures.Save(view, "full");
  view.UsePreset(1);
  pictures.Save(view, "bone");
  view.setFocus();
  Drag(view, pictures);
  QTest::keyClick(&view, Qt::Key_N);
  view.ZoomIn();
  view.ZoomIn();
  view.SetFlipped(true);
  view.SetInverted(true);
  pictures.Save(view, "keys-flipped-inverted");
  pictures.Save(view.PictureWithMarks(), "saved");
}

}  // namespace

int main(int argc, char** argv) {
  return RunPictureProgram(argc, argv, SaveAll);
}
