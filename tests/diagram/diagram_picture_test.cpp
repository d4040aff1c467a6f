// The diagram as people see it: accepted pictures, and labels that can be read.
#include <gtest/gtest.h>

#include <QPainter>
#include <string>
#include <utility>

#include "diagram/diagram_view.h"
#include "tests/diagram/diagram_cases.h"
#include "tests/support/golden_picture.h"
#include "tests/support/row_name.h"

namespace {

using Vizual::Side;

QPalette Face(QColor window) {
  QPalette palette;
  palette.setColor(QPalette::Window, window);
  return palette;
}
const QColor kLight(239, 239, 239);
const QColor kDark(45, 45, 48);

// The picture of a case as in a window `width` wide on a display with this scale factor.
QImage Painted(const DiagramCase& row, int width, double ratio, const QPalette& palette) {
  const Drawn drawn(row);
  QImage image(int(width * ratio), int(width * 2 / 3 * ratio), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  Vizual::PaintDiagram(painter, image.rect(), drawn.picture, drawn.labels, {palette, ratio, true});
  return image;
}

struct PictureRow {
  std::string name;
  DiagramCase row;
  double ratio = 1.0;
  QColor window = kLight;
};

DiagramCase Case(std::size_t index, Side side, bool onPaper = false) {
  return With(DiagramCases().at(index), side, onPaper);
}

class DiagramPicture : public testing::TestWithParam<PictureRow> {};

TEST_P(DiagramPicture, LooksAsAccepted) {
  const PictureRow& row = GetParam();
  ExpectGoldenPicture(Painted(row.row, 600, row.ratio, Face(row.window)), "tests/diagram/golden",
                      QString::fromStdString(row.name));
}

INSTANTIATE_TEST_SUITE_P(Rows, DiagramPicture,
                         testing::Values(PictureRow{"form_d", Case(0, Side::D)},
                                         PictureRow{"form_l", Case(0, Side::L)},
                                         PictureRow{"form_d_200", Case(0, Side::D), 2.0},
                                         PictureRow{"form_l_200", Case(0, Side::L), 2.0},
                                         PictureRow{"form_d_dark", Case(0, Side::D), 1.0, kDark},
                                         PictureRow{"weight_unknown", Case(1, Side::D)},
                                         PictureRow{"pole_beyond_the_edge", Case(2, Side::L)},
                                         PictureRow{"paper_form_l", Case(0, Side::L, true), 2.0},
                                         PictureRow{"paper_form_d", Case(0, Side::D, true), 2.0}),
                         RowName());

// Labels are whole inside the picture, and the legends' lie on no stroke and on no other label.
class LabelPlaces : public testing::TestWithParam<DiagramCase> {
 protected:
  LabelPlaces() : drawn_(GetParam()), page_(600, 400, QImage::Format_RGB32), painter_(&page_) {}
  QRectF Area(const PictureLabel& label) const {
    return LabelArea(painter_, page_.rect(), drawn_.picture, label);
  }
  QPointF Place(QPointF user) const { return user * 600.0 / 7500.0; }

  Drawn drawn_;
  QImage page_;
  QPainter painter_;
};

TEST_P(LabelPlaces, CanBeRead) {
  const auto& labels = drawn_.labels;
  const QRectF stress = Area(labels.stressLegend);
  const QRectF force = Area(labels.forceLegend);
  const QRectF marker = Area(labels.leftHip);
  EXPECT_FALSE(stress.intersects(force));
  for (const PictureLabel* label : {&labels.stressLegend, &labels.forceLegend, &labels.edgeAngle,
                                    &labels.forceAngle, &labels.leftHip, &labels.rightHip}) {
    EXPECT_TRUE(QRectF(page_.rect()).contains(Area(*label))) << label->caption.toStdString();
  }
  for (const QRectF& area : {stress, force, marker}) {
    EXPECT_FALSE(area.intersects(Area(labels.edgeAngle)));
    EXPECT_FALSE(area.intersects(Area(labels.forceAngle)));
    for (const Drawing& drawing : drawn_.picture.Drawings()) {
      const auto* line = std::get_if<LineShape>(&drawing.shape);
      if (line == nullptr) continue;
      for (double part = 0.0; part <= 1.0; part += 0.01) {
        ASSERT_FALSE(area.contains(Place(line->from + part * (line->to - line->from))));
      }
    }
  }
}

std::vector<DiagramCase> UsualCases() {
  std::vector<DiagramCase> rows;
  for (const double edge : {5.0, 20.0, 25.0, 30.0, 35.0, 40.0, 45.0}) {
    for (const Side side : {Side::L, Side::D}) {
      for (const bool absolute : {true, false}) {
        DiagramCase row =
            With({.name = "Edge" + std::to_string(int(edge)), .edgeAngle = edge}, side, false);
        row.absolute = absolute;
        if (!absolute) row.forceScale = kRWb;
        if (!absolute) row.name += "PerWeight";
        rows.push_back(row);
      }
    }
  }
  return rows;
}

INSTANTIATE_TEST_SUITE_P(Rows, LabelPlaces, testing::ValuesIn(UsualCases()), RowName());

// With an edge a little medial of the upright both angles' labels have one place.
TEST(DiagramLabels, TheForceAnglesLabelStaysClearOfTheEdgeAngles) {
  Drawn drawn(With({.name = "Edge", .edgeAngle = -5.0, .poleAngle = 74.0}, Side::L, false));
  const auto painted = [&](bool withForceAngle) {
    QImage image(600, 400, QImage::Format_RGB32);
    QPainter painter(&image);
    drawn.labels.forceAngle.visible = withForceAngle;
    Vizual::PaintDiagram(painter, image.rect(), drawn.picture, drawn.labels,
                         {Face(kLight), 1.0, true});
    const QRectF edge = LabelArea(painter, image.rect(), drawn.picture, drawn.labels.edgeAngle);
    const QRectF force = LabelArea(painter, image.rect(), drawn.picture, drawn.labels.forceAngle);
    EXPECT_TRUE(edge.intersects(force)) << "the test looks at nothing";
    return std::pair(image, image.copy(edge.toRect()));
  };
  const auto [with, edgeWith] = painted(true);
  const auto [without, edgeWithout] = painted(false);
  EXPECT_NE(with, without);
  EXPECT_EQ(edgeWith, edgeWithout);
}

TEST(DiagramView, HoldsThreeToTwoAndShowsPictureAndLabels) {
  Vizual::DiagramView view;
  view.resize(700, 400);
  view.setPalette(Face(kLight));
  DiagramCase row = Case(0, Side::D);
  view.Labels().leftHip.visible = true;
  DrawHipDiagram(row.side, view.Screen(), row.stressScale, row.headSize, row.edgeAngle,
                 row.poleAngle, row.forceAngle, row.forceScale);
  const QImage seen = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
  EXPECT_EQ(view.PictureArea(), QRectF(50, 0, 600, 400));
  ExpectGoldenPicture(seen.copy(50, 0, 600, 400), "tests/diagram/golden", "form_d");
}

// The comparison itself.
TEST(GoldenPicture, ForgivesSmoothingAndFindsAMissingStroke) {
  DiagramCase row = Case(0, Side::D);
  const QImage wanted = Painted(row, 600, 1.0, Face(kLight));
  EXPECT_EQ(golden::Compare(wanted, wanted).pixels, 0);
  QImage noisy = wanted;
  for (int x = 0; x < 600; ++x)
    noisy.setPixelColor(x, x % 400, wanted.pixelColor(x, x % 400).darker(110));
  EXPECT_LE(golden::Compare(noisy, wanted).pixels, golden::kPixelTolerance);
  row.edgeAngle = 27.0;  // one stroke less, other lines turned
  const QImage other = Painted(row, 600, 1.0, Face(kLight));
  EXPECT_GT(golden::Compare(other, wanted).pixels, 100);
  QImage dotted = wanted;
  for (int y = 260; y < 273; ++y) dotted.setPixelColor(456, y - 200, kLight);  // a nick in a bar
  EXPECT_GT(golden::Compare(dotted, wanted).pixels, golden::kPixelTolerance);
}

}  // namespace
