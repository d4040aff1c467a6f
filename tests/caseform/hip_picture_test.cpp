// The picture of pelvis and femur: the marks stand where the measures are, and it is drawn at any
// size.
#include "caseform/hip_picture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTransform>
#include <cmath>

#include "platform/hip_bones.h"
#include "tests/support/golden_picture.h"
#include "tests/support/row_name.h"

namespace {

struct Span {
  const char* name;
  Sila::Measurement measure;
  QPointF from, to;
};

class Lengths : public testing::TestWithParam<Span> {};

// In centimetres, as a new form proposes them: the drawing is true to scale but for the vertical
// coordinate of the trochanter, which would be too short to see.
TEST_P(Lengths, ReachFromBoneToBone) {
  const HipPicture picture;
  const QPainterPath& stretch = picture.LinesOf(GetParam().measure).first()->shape().stretch;
  EXPECT_EQ(stretch.pointAtPercent(0.0), GetParam().from);
  EXPECT_EQ(stretch.pointAtPercent(1.0), GetParam().to);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Lengths,
    testing::Values(Span{"HalfInterhip", Sila::Measurement::Lizm, {0.0, 0.0}, {10.4, 0.0}},
                    Span{"TrochanterHeight", Sila::Measurement::Xizm, {-7.9, 0.0}, {-7.9, 1.3}},
                    Span{"TrochanterWidth", Sila::Measurement::Zizm, {-6.2, 9.3}, {0.0, 9.3}},
                    Span{"PelvicWidth", Sila::Measurement::Cizm, {-4.4, -10.6}, {0.0, -10.6}},
                    Span{"PelvicHeight", Sila::Measurement::Hizm, {1.6, 0.0}, {1.6, -16.0}}),
    RowName());

// In hundredths of a centimetre: Qt flattens curves to about half a unit.
QPainterPath Fine(const QPainterPath& path) {
  return QTransform::fromScale(100.0, 100.0).map(path);
}

TEST(HipBones, ReachWhereTheMeasuresSay) {
  const QRectF pelvis = HipBones::HalfPelvis().boundingRect();
  EXPECT_NEAR(pelvis.top(), -16.0, 0.05);  // H
  EXPECT_NEAR(pelvis.left(), -4.4, 0.05);  // C
  EXPECT_LT(pelvis.right(), 10.4);         // the symphysis lies at the midline
  EXPECT_GT(pelvis.right(), 9.9);
  const QPainterPath femur = Fine(HipBones::Femur());
  EXPECT_TRUE(femur.contains(QPointF(248.0, 3.0)));
  EXPECT_FALSE(femur.contains(QPointF(252.0, 3.0)));
  EXPECT_TRUE(femur.contains(QPointF(-618.0, 130.0)));
  EXPECT_FALSE(femur.contains(QPointF(-622.0, 130.0)));
}

TEST(HipBones, LeaveTheJointSpaceOpen) {
  EXPECT_TRUE(Fine(HipBones::Femur()).intersected(Fine(HipBones::HalfPelvis())).isEmpty());
}

TEST(HipPicture, CentreEdgeAngleRunsFromTheVerticalToTheSocketsEdge) {
  const HipPicture picture;
  const QList<DimensionLine*> lines = picture.LinesOf(Sila::Measurement::ThetaCE);
  ASSERT_EQ(lines.size(), 3);
  EXPECT_NEAR(lines[0]->shape().stretch.pointAtPercent(1.0).x(), 0.0, 1e-9);
  const QPointF edge = lines[1]->shape().stretch.pointAtPercent(1.0);
  EXPECT_NEAR(std::atan2(-edge.x(), -edge.y()) * 180.0 / M_PI, 30.0, 1e-9);
  const QPointF socket = HipBones::HalfPelvis().pointAtPercent(0.0);
  EXPECT_NEAR(std::atan2(-socket.x(), -socket.y()) * 180.0 / M_PI, 30.0, 1e-9);
}

TEST(HipPicture, HasTenLinesAndNineLabels) {
  const HipPicture picture;
  for (int i = 1; i <= 10; ++i) {
    EXPECT_NE(picture.findChild<DimensionLine*>(QStringLiteral("Line%1").arg(i)), nullptr) << i;
  }
  for (int i = 20; i <= 28; ++i) {
    EXPECT_NE(picture.findChild<DimensionLabel*>(QStringLiteral("Label%1").arg(i)), nullptr) << i;
  }
  EXPECT_EQ(picture.findChildren<DimensionLine*>().size(), 10);
  EXPECT_EQ(picture.findChildren<DimensionLabel*>().size(), 9);
}

TEST(HipPicture, NamesEveryMeasureForAllTimes) {
  const HipPicture picture;
  QString names;
  for (std::size_t i = 0; i < Sila::kRadiographCount; ++i) {
    for (const DimensionLabel* label : picture.LabelsOf(static_cast<Sila::Measurement>(i))) {
      EXPECT_TRUE(label->isVisible());
      names += label->text();
    }
    names += QLatin1Char(' ');
  }
  EXPECT_EQ(names, u"l/2 x z C H φ ϑCE r "_qs);
}

TEST(HipPicture, SetsLettersOfAnglesInSymbolAndTheRestInTimes) {
  const HipPicture picture;
  QStringList inSymbol;
  for (const DimensionLabel* label : picture.findChildren<DimensionLabel*>()) {
    const QString family = label->Font().families().value(0);
    EXPECT_TRUE(family == "Symbol" || family == "Times New Roman") << family.toStdString();
    if (family == "Symbol") inSymbol << label->text();
  }
  EXPECT_EQ(inSymbol, QStringList({"φ", "ϑ"}));
}

TEST(HipPicture, NoLabelLiesOnALineOrOnAnother) {
  const HipPicture picture;
  const QList<DimensionLabel*> labels = picture.findChildren<DimensionLabel*>();
  for (const DimensionLabel* label : labels) {
    const QRectF box = label->Letters().boundingRect();
    EXPECT_TRUE(HipBones::kExtent.contains(box)) << label->objectName().toStdString();
    for (const DimensionLine* line : picture.findChildren<DimensionLine*>()) {
      EXPECT_FALSE(line->shape().stretch.intersects(box))
          << label->objectName().toStdString() << " on " << line->objectName().toStdString();
      EXPECT_FALSE(line->shape().leaders.intersects(box))
          << label->objectName().toStdString() << " on " << line->objectName().toStdString();
    }
    for (const DimensionLabel* other : labels) {
      if (other == label) continue;
      EXPECT_FALSE(other->Letters().boundingRect().intersects(box))
          << label->objectName().toStdString() << " on " << other->objectName().toStdString();
    }
  }
}

QImage Render(HipPicture& picture, QSize size, double scale) {
  picture.resize(size);
  QImage image(size * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  picture.render(&image);
  return image;
}

bool IsRed(QRgb colour) {
  return qRed(colour) > 200 && qGreen(colour) < 90 && qBlue(colour) < 90;
}

int CountRed(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += IsRed(image.pixel(x, y)) ? 1 : 0;
  }
  return count;
}

TEST(HipPicture, ShowsTheHighlightedDimensionInRed) {
  HipPicture picture;
  const QSize size = picture.sizeHint();
  EXPECT_EQ(CountRed(Render(picture, size, 1.0)), 0);
  picture.SetHighlighted(Sila::Measurement::Hizm, true);
  const double pixelsPerCm = size.width() / HipBones::kExtent.width();
  // 16 cm long and 2 pixels wide; the letters and arrow heads come on top.
  EXPECT_GT(CountRed(Render(picture, size, 1.0)), 16.0 * pixelsPerCm);
  picture.SetHighlighted(Sila::Measurement::Hizm, false);
  EXPECT_EQ(CountRed(Render(picture, size, 1.0)), 0);
}

TEST(HipPicture, KeepsItsShapeAndItsLightGround) {
  HipPicture picture;
  QPalette dark(Qt::black, Qt::black);
  picture.setPalette(dark);
  const QImage wide = Render(picture, {800, 300}, 1.0);
  EXPECT_EQ(wide.pixelColor(0, 0), QColor(Qt::white));
  EXPECT_EQ(wide.pixelColor(799, 299), QColor(Qt::white));
  for (int y = 0; y < 300; ++y) EXPECT_EQ(wide.pixelColor(100, y), QColor(Qt::white));
  const QImage large = Render(picture, picture.sizeHint(), 2.0);
  EXPECT_EQ(large.size(), picture.sizeHint() * 2);
}

TEST(HipPicture, LooksAsAccepted) {
  HipPicture picture;
  ExpectGoldenPicture(Render(picture, picture.sizeHint(), 1.0), "tests/caseform/golden", "plain");
  picture.SetHighlighted(Sila::Measurement::ThetaCE, true);
  ExpectGoldenPicture(Render(picture, picture.sizeHint(), 2.0), "tests/caseform/golden",
                      "centre_edge_angle_200");
}

}  // namespace
