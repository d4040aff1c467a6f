// Accepted pictures of the marks: on black and on white, at 100 and 200 %.
#include "measuring/mark_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <string>

#include "tests/support/golden_picture.h"
#include "tests/support/row_name.h"

namespace {

using namespace Measuring;

MarkScene EveryMark() {
  MarkScene scene;
  scene.points[IndexOf(MarkKind::Head)] = {{170, 60}, {130, 100}, {90, 60}, {130, 20}};
  scene.circles[IndexOf(MarkKind::Head)] = CircleOnPicture{{130, 60}, 40, 40};
  scene.points[IndexOf(MarkKind::OtherHead)] = {{50, 60}, {20, 90}, {10, 30}};
  scene.points[IndexOf(MarkKind::Midline)] = {{70, 10}, {75, 120}};
  scene.points[IndexOf(MarkKind::SocketEdge)] = {{165, 25}};
  scene.points[IndexOf(MarkKind::CrestTop)] = {{200, 20}};
  scene.points[IndexOf(MarkKind::CrestLateral)] = {{220, 60}};
  scene.points[IndexOf(MarkKind::Trochanter)] = {{210, 100}};
  scene.points[IndexOf(MarkKind::Ball)] = {{20, 130}, {50, 130}, {35, 145}};
  scene.circles[IndexOf(MarkKind::Ball)] = CircleOnPicture{{35, 130}, 15, 15};
  scene.points[IndexOf(MarkKind::Line)] = {{90, 140}, {180, 130}};
  return scene;
}

constexpr ViewTransform kTransform{{480.0, 320.0}, 2.0, 1.0, false, {119.5, 79.5}};

QImage Painted(const MarkScene& scene, QColor ground, double ratio, Captions captions) {
  QImage image((kTransform.view * ratio).toSize(), QImage::Format_RGB32);
  image.fill(ground);
  QPainter painter(&image);
  painter.scale(ratio, ratio);
  PaintMarks(painter, kTransform, scene, captions);
  return image;
}

struct MarkPictureRow {
  std::string name;
  QColor ground;
  double ratio;
};
class MarkPictureTest : public testing::TestWithParam<MarkPictureRow> {};

TEST_P(MarkPictureTest, IsTheAcceptedOne) {
  MarkScene scene = EveryMark();
  scene.current = MarkKind::Head;
  scene.selected = MarkPoint{MarkKind::Head, 1};
  const auto& row = GetParam();
  ExpectGoldenPicture(Painted(scene, row.ground, row.ratio, Captions::OfCurrent),
                      "tests/measuring/golden", QString::fromStdString("marks_" + row.name));
}

INSTANTIATE_TEST_SUITE_P(All, MarkPictureTest,
                         testing::Values(MarkPictureRow{"black_100", Qt::black, 1.0},
                                         MarkPictureRow{"black_200", Qt::black, 2.0},
                                         MarkPictureRow{"white_100", Qt::white, 1.0},
                                         MarkPictureRow{"white_200", Qt::white, 2.0}),
                         RowName());

TEST(MarkPicture, WithAllCaptionsIsTheAcceptedOne) {
  ExpectGoldenPicture(Painted(EveryMark(), Qt::gray, 1.0, Captions::OfAll),
                      "tests/measuring/golden", "all_captions");
}

// Of points, lines and circles alike, the current one is told apart without its colour.
TEST(MarkPicture, TheCurrentMarkIsKnownWithoutColours) {
  for (const MarkRow& row : kMarks) {
    MarkScene scene;
    scene.points[IndexOf(row.id)] = {{100, 80}};
    const QImage other = Painted(scene, Qt::black, 1.0, Captions::None);
    scene.current = row.id;
    const QImage current = Painted(scene, Qt::black, 1.0, Captions::None);
    int changed = 0;
    for (int y = 0; y < other.height(); ++y) {
      for (int x = 0; x < other.width(); ++x) {
        const bool was = qGray(other.pixel(x, y)) > 60;
        if (was != (qGray(current.pixel(x, y)) > 60)) ++changed;
      }
    }
    EXPECT_GT(changed, 20) << row.key.toUtf8().constData();
  }
}

// On every ground from black to white something of a mark stands out from it, and within the mark
// light lies beside dark.
TEST(MarkPicture, AMarkIsSeenOnEveryGround) {
  for (const int grey : {0, 64, 128, 192, 255}) {
    for (const MarkRow& row : kMarks) {
      MarkScene scene;
      scene.points[IndexOf(row.id)] = {{100, 80}};
      const QImage image = Painted(scene, QColor(grey, grey, grey), 1.0, Captions::None);
      int most = 0;
      for (int y = 100; y < 220; ++y) {
        for (int x = 140; x < 260; ++x) {
          most = std::max(most, std::abs(qGray(image.pixel(x, y)) - grey));
        }
      }
      EXPECT_GE(most, 80) << grey << ' ' << row.key.toUtf8().constData();
    }
  }
}

// A handle leaves the place that it marks free.
TEST(MarkPicture, ThePlaceItselfIsNotCovered) {
  const QColor ground(100, 100, 100);
  for (const bool isCurrent : {false, true}) {
    for (const MarkRow& row : kMarks) {
      MarkScene scene = EveryMark();
      if (isCurrent) scene.current = row.id;
      const QImage image = Painted(scene, ground, 2.0, Captions::None);
      const auto place = scene.points[IndexOf(row.id)].front();
      const QPoint at = (2.0 * PositionOf(kTransform, place)).toPoint();
      EXPECT_EQ(image.pixelColor(at), ground) << row.key.toUtf8().constData() << isCurrent;
    }
  }
}

TEST(MarkPicture, HandlesHaveTheSameSizeAtEveryZoom) {
  MarkScene scene;
  scene.points[IndexOf(MarkKind::Trochanter)] = {{100, 80}};
  const auto painted = [&](double zoom) {
    QImage image(60, 60, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    PaintMarks(painter, {{60.0, 60.0}, zoom, 1.0, false, {100, 80}}, scene, Captions::None);
    return image;
  };
  EXPECT_EQ(painted(0.1), painted(1.0));
  EXPECT_EQ(painted(1.0), painted(64.0));
}

// In a view of 200 x 200, a pixel of the picture to each of its own and the first in its corner.
bool HasCaption(MarkScene scene, MarkKind kind) {
  scene.current = kind;
  const auto painted = [&](Captions captions) {
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    PaintMarks(painter, {{200.0, 200.0}, 1.0, 1.0, false, {100, 100}}, scene, captions);
    return image;
  };
  return painted(Captions::OfCurrent) != painted(Captions::None);
}

TEST(MarkPicture, ALineHasACaptionWhereSomeOfItIsSeen) {
  const auto hasCaption = [](Landmarks::PixelPlace a, Landmarks::PixelPlace b) {
    MarkScene scene;
    scene.points[IndexOf(MarkKind::Line)] = {a, b};
    return HasCaption(scene, MarkKind::Line);
  };
  EXPECT_TRUE(hasCaption({50, 50}, {90, 150})) << "all of it";
  EXPECT_TRUE(hasCaption({-50, 100}, {250, 120})) << "across the view, both ends outside";
  EXPECT_FALSE(hasCaption({-50, 100}, {-100, 100})) << "beside the view";
  EXPECT_FALSE(hasCaption({-50, 180}, {150, 300})) << "past a corner, its bounds meet the view";
  EXPECT_TRUE(hasCaption({-50, 150}, {50, 220})) << "through a corner";
}

TEST(MarkPicture, ACircleHasACaptionWhereSomeOfItIsSeen) {
  const auto hasCaption = [](Landmarks::PixelPlace centre, double radius) {
    MarkScene scene;
    scene.points[IndexOf(MarkKind::Head)] = {{centre.column + radius, centre.row}};
    scene.circles[IndexOf(MarkKind::Head)] = CircleOnPicture{centre, radius, radius};
    return HasCaption(scene, MarkKind::Head);
  };
  EXPECT_TRUE(hasCaption({100, 100}, 50)) << "all of it";
  EXPECT_TRUE(hasCaption({-100, 100}, 150)) << "a part of its edge";
  EXPECT_TRUE(hasCaption({100, 100}, 500)) << "its centre";
  EXPECT_FALSE(hasCaption({-300, 100}, 800)) << "its edge lies around the view";
  EXPECT_FALSE(hasCaption({-60, -60}, 80)) << "past a corner, its bounds meet the view";
}

// Pixels that are higher than wide make an ellipse of what is a circle in pixels.
TEST(MarkPicture, ACircleIsPaintedAcrossAndDown) {
  MarkScene scene;
  scene.points[IndexOf(MarkKind::Ball)] = {{100, 80}};
  scene.circles[IndexOf(MarkKind::Ball)] = CircleOnPicture{{100, 80}, 10, 5};
  QImage image(200, 200, QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  PaintMarks(painter, {{200.0, 200.0}, 4.0, 2.0, false, {100, 80}}, scene, Captions::None);
  painter.end();
  for (const QPoint at : {QPoint(140, 100), QPoint(60, 100), QPoint(100, 140), QPoint(100, 60)}) {
    EXPECT_GT(qGray(image.pixel(at)), 60) << at.x() << ' ' << at.y();
  }
}

}  // namespace
