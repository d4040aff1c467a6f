// The diagram as geometry: every stroke, arc and text, against closed forms in polar coordinates.
#include "diagram/hip_diagram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "tests/diagram/diagram_cases.h"
#include "tests/support/row_name.h"

namespace {

using Vizual::Side;

constexpr double kRight = std::numbers::pi / 2;
constexpr double kTolerance = 1e-9;

double Radians(double degrees) {
  return degrees * 3.14 / 180.0;
}

// Reads the strokes of a drawing one by one and checks the pen of each.
class Reader {
 public:
  explicit Reader(const PictureBox& picture) : picture_(picture) {}

  LineShape NextLine(Colour colour, LineStyle style) {
    CheckPen(colour, style);
    return std::get<LineShape>(Next().shape);
  }
  ArcShape NextArc(LineStyle style) {
    CheckPen(kBlack, style);
    return std::get<ArcShape>(Next().shape);
  }
  std::vector<LineShape> NextFan() {
    std::vector<LineShape> fan;
    while (At(at_).pen.colour == kRed && Left(at_) != 5700.0) {
      fan.push_back(NextLine(kRed, LineStyle::Solid));
    }
    return fan;
  }
  bool IsAtEnd() const { return at_ == picture_.Drawings().size(); }

 private:
  const Drawing& At(std::size_t i) const { return picture_.Drawings().at(i); }
  double Left(std::size_t i) const { return std::get<LineShape>(At(i).shape).from.x(); }
  const Drawing& Next() { return At(at_++); }
  void CheckPen(Colour colour, LineStyle style) const {
    EXPECT_EQ(At(at_).pen, (Pen{colour, 1, style})) << "stroke " << at_;
    EXPECT_EQ(At(at_).scale, QRectF(0, 0, 7500, 5000));
    EXPECT_EQ(At(at_).fill.kind, FillKind::Transparent);
  }

  const PictureBox& picture_;
  std::size_t at_ = 0;
};

class HipDiagram : public testing::TestWithParam<DiagramCase> {
 protected:
  HipDiagram() : drawn_(row_), read_(drawn_.picture) {
    centre_ = {2500.0, 5000.0 - 5000.0 / (row_.onPaper ? 4.5 : 4.7)};
    head_ = 5000.0 * row_.headSize / 7 / 25;
    tE_ = Radians(row_.edgeAngle);
    tP_ = Radians(row_.poleAngle);
    tR_ = Radians(row_.forceAngle);
  }

  bool FormL() const { return row_.side == Side::L; }
  double Towards(double angle) const { return FormL() ? kRight + angle : kRight - angle; }
  QPointF Polar(double distance, double psi) const {
    return {centre_.x() + distance * std::cos(psi), centre_.y() - distance * std::sin(psi)};
  }
  static void ExpectPoint(QPointF got, QPointF wanted, const char* what) {
    EXPECT_NEAR(got.x(), wanted.x(), kTolerance) << what;
    EXPECT_NEAR(got.y(), wanted.y(), kTolerance) << what;
  }
  void ExpectFromCentre(const LineShape& line, double length, double psi, const char* what) {
    ExpectPoint(line.from, centre_, what);
    ExpectPoint(line.to, Polar(length, psi), what);
  }

  void ExpectFan() {
    const std::vector<LineShape> fan = read_.NextFan();
    ASSERT_EQ(fan.size(), std::size_t(row_.inward + row_.outward));
    const bool fromEdge = row_.edgeAngle <= row_.poleAngle;
    const double longest = fromEdge ? std::cos(tP_ - tE_) : 1.0;
    for (int k = 0; k < row_.inward + row_.outward; ++k) {
      const int steps = k < row_.inward ? k : row_.inward - k;
      const double phi = (fromEdge ? tP_ - tE_ : 0.0) + steps * Radians(5);
      const LineShape& stroke = fan[std::size_t(k)];
      const double outer = 1.1 * head_ + 2000.0 * std::cos(phi) / longest;
      ExpectPoint(stroke.from, Polar(1.1 * head_, Towards(tP_ - phi)), "inner end");
      ExpectPoint(stroke.to, Polar(outer, Towards(tP_ - phi)), "outer end");
    }
  }

  void ExpectLegendBar(Colour colour, double top, double length) {
    const LineShape bar = read_.NextLine(colour, LineStyle::Solid);
    ExpectPoint(bar.from, {5700, top}, "bar");
    ExpectPoint(bar.to, {5700, top + length}, "bar");
  }

  void ExpectArrow() {
    const double shaft = 1000.0 * row_.forceScale;
    const double head = row_.onPaper && !FormL() ? shaft : 5000.0 / 15;
    const double psi = Towards(-tR_);
    ExpectFromCentre(read_.NextLine(kBlue, LineStyle::Solid), shaft, psi, "shaft");
    const double turn = FormL() ? -Radians(22.5) : Radians(22.5);
    ExpectFromCentre(read_.NextLine(kBlue, LineStyle::Solid), head, psi + turn, "head");
    ExpectFromCentre(read_.NextLine(kBlue, LineStyle::Solid), head, psi - turn, "head");
  }

  void ExpectArc(double radius, double angle) {
    const ArcShape arc = read_.NextArc(LineStyle::Dotted);
    ExpectPoint(arc.centre, centre_, "arc");
    EXPECT_NEAR(arc.radius, radius, kTolerance);
    // The short arc between the upright and the direction, whichever comes first.
    EXPECT_NEAR(arc.start, std::min(kRight, Towards(angle)), kTolerance);
    EXPECT_NEAR(arc.sweep, std::abs(angle), kTolerance);
  }

  double ActionLength() const { return FormL() && !row_.onPaper ? 5000 / 1.3 : 5000 / 1.3 / 1.1; }

  const DiagramCase row_ = GetParam();
  Drawn drawn_;
  Reader read_;
  QPointF centre_;
  double head_, tE_, tP_, tR_;
};

TEST_P(HipDiagram, DrawsEveryStrokeInOrder) {
  const ArcShape outline = read_.NextArc(LineStyle::Solid);
  ExpectPoint(outline.centre, centre_, "head");
  EXPECT_NEAR(outline.radius, head_, kTolerance);
  EXPECT_EQ(outline.sweep, 2 * std::numbers::pi);
  ExpectFan();
  ExpectLegendBar(kRed, 250, 2000 / row_.stressScale);
  ExpectArrow();
  ExpectLegendBar(kBlue, 2325, 1000);
  const double vertical = row_.onPaper && !FormL() ? 5000 / 1.2 : 5000 / 1.3;
  ExpectFromCentre(read_.NextLine(kBlack, LineStyle::Dotted), vertical, kRight, "vertical");
  ExpectFromCentre(read_.NextLine(kBlack, LineStyle::Dotted), 5000 / 1.3, Towards(tE_), "edge");
  ExpectArc(5000 / 1.3 / 1.2, tE_);
  ExpectArc(5000 / 1.3 / 1.25, -tR_);
  ExpectFromCentre(read_.NextLine(kBlack, LineStyle::Dotted), ActionLength(), Towards(-tR_),
                   "line of action");
  EXPECT_TRUE(read_.IsAtEnd());
}

TEST_P(HipDiagram, TurnsTheAnglesToRadians) {
  EXPECT_DOUBLE_EQ(drawn_.edge, tE_);
  EXPECT_DOUBLE_EQ(drawn_.pole, tP_);
  EXPECT_DOUBLE_EQ(drawn_.force, tR_);
}

TEST_P(HipDiagram, LeavesScaleAndPen) {
  const PictureBox& box = drawn_.picture;
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(QRectF(box.ScaleLeft(), box.ScaleTop(), box.ScaleWidth(), box.ScaleHeight()),
            QRectF(0, 0, 7500, 5000));
  EXPECT_EQ(box.DrawStyle(), LineStyle::Dotted);
  EXPECT_EQ(box.DrawWidth(), 1);
}

TEST_P(HipDiagram, PlacesAndShowsTheLabels) {
  const auto& labels = drawn_.labels;
  const QPointF edgeEnd = Polar(5000 / 1.3, Towards(tE_));
  const double beside = FormL() ? (row_.onPaper ? 500 : 100) : -1000;
  ExpectPoint({labels.edgeAngle.left, labels.edgeAngle.top}, edgeEnd + QPointF(beside, 0), "edge");
  ExpectPoint({labels.forceAngle.left, labels.forceAngle.top}, Polar(ActionLength(), Towards(-tR_)),
              "force");
  EXPECT_EQ(labels.edgeAngle.caption, "Theta CE");
  EXPECT_EQ(labels.forceAngle.caption, "Theta-R");
  for (const PictureLabel* label :
       {&labels.stressLegend, &labels.forceLegend, &labels.edgeAngle, &labels.forceAngle}) {
    EXPECT_TRUE(label->visible) << label->caption.toStdString();
    EXPECT_EQ(label->backColor, row_.onPaper ? kWhite : kButtonFace);
  }
}

TEST_P(HipDiagram, LegendsNameTheirUnits) {
  EXPECT_EQ(drawn_.labels.stressLegend.caption,
            row_.absolute ? "Pmax           1 MPa" : "Pmax/Wb     1000 m^-2");
  EXPECT_EQ(drawn_.labels.forceLegend.caption,
            row_.absolute ? "R              1 kN" : "R/Wb           1 ");
}

TEST_P(HipDiagram, PrintsTheTextsOnPaperOnly) {
  if (!row_.onPaper) {
    EXPECT_TRUE(drawn_.texts.empty());
    return;
  }
  const QPointF edgeEnd = Polar(5000 / 1.3, Towards(tE_));
  const QPointF action = Polar(ActionLength(), Towards(-tR_));
  const char* newtons = FormL() ? "1 N" : "N";
  const auto& hip = drawn_.labels.leftHip;
  const std::vector<Vizual::PrintedText> wanted{
      {row_.absolute ? "Pmax" : "Pmax/Wb", 5800, 300, 10},
      {row_.absolute ? "MPa" : "1000 m^-2", 5800, 800, 10},
      {row_.absolute ? "R" : "R/Wb", 5800, 2350, 10},
      {row_.absolute ? newtons : "1", 5800, 2850, 10},
      {"Theta CE", edgeEnd.x() + (FormL() ? 100 : -1000), edgeEnd.y(), 7},
      {"Theta-R", action.x(), action.y(), 7},
      {FormL() ? "L" : "D", hip.left, hip.top, 15},
  };
  ASSERT_EQ(drawn_.texts.size(), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const Vizual::PrintedText& got = drawn_.texts[i];
    EXPECT_EQ(got.text, wanted[i].text);
    EXPECT_NEAR(got.x, wanted[i].x + 1000, kTolerance) << wanted[i].text.toStdString();
    EXPECT_NEAR(got.y, wanted[i].y + 2000, kTolerance) << wanted[i].text.toStdString();
    EXPECT_EQ(got.fontSize, wanted[i].fontSize) << wanted[i].text.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, HipDiagram, testing::ValuesIn(AllForms(DiagramCases())), RowName());

}  // namespace
