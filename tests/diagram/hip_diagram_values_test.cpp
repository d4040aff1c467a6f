// Known lengths of the diagram, its mirror images, and what it does to the box.
#include "diagram/hip_diagram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/diagram/diagram_cases.h"

namespace {

using Vizual::Side;

std::vector<LineShape> Lines(const PictureBox& box, Colour colour) {
  std::vector<LineShape> lines;
  for (const Drawing& drawing : box.Drawings()) {
    const auto* line = std::get_if<LineShape>(&drawing.shape);
    if (line != nullptr && drawing.pen.colour == colour) lines.push_back(*line);
  }
  return lines;
}

double Length(const LineShape& line) {
  return std::hypot(line.to.x() - line.from.x(), line.to.y() - line.from.y());
}

DiagramCase Case(const std::string& name) {
  for (const DiagramCase& row : DiagramCases()) {
    if (row.name == name) return row;
  }
  ADD_FAILURE() << "no case " << name;
  return {};
}

TEST(HipDiagramValues, DefaultHipOf70Kilograms) {
  const Drawn drawn(Case("Default"));
  const auto red = Lines(drawn.picture, kRed);
  ASSERT_EQ(red.size(), 19U + 3U + 1U);
  EXPECT_EQ(red.back().from, QPointF(5700, 250));
  EXPECT_NEAR(red.back().to.y(), 1217.66, 0.005);
  EXPECT_NEAR(Length(Lines(drawn.picture, kBlue).at(0)), 1933.12, 0.005);
}

TEST(HipDiagramValues, UnknownWeight) {
  const Drawn drawn(Case("UnknownWeight"));
  EXPECT_NEAR(Length(Lines(drawn.picture, kRed).back()), 665.17, 0.005);
  EXPECT_NEAR(Length(Lines(drawn.picture, kBlue).at(0)), 2812.23, 0.005);
  EXPECT_EQ(drawn.labels.stressLegend.caption, "Pmax/Wb     1000 m^-2");
}

TEST(HipDiagramValues, EdgeAngleOfFiveDegrees) {
  const Drawn drawn(Case("PoleBeyondTheEdge"));
  const auto red = Lines(drawn.picture, kRed);
  ASSERT_EQ(red.size(), 8U + 1U);
  EXPECT_NEAR(Length(red.front()), 2000, 1e-9);
  for (std::size_t i = 1; i < 8; ++i) EXPECT_LT(Length(red[i]), Length(red[i - 1]));
}

TEST(HipDiagramValues, FanFromTheEdgeShrinksToNothing) {
  const Drawn drawn(Case("PoleAtTheEdge"));
  const auto red = Lines(drawn.picture, kRed);
  EXPECT_NEAR(Length(red.front()), 2000, 1e-9);
  EXPECT_LT(Length(red.at(18)), 2);
}

TEST(HipDiagramValues, PoleStrokeIsDrawnTwice) {
  const Drawn drawn(Case("Default"));
  const auto red = Lines(drawn.picture, kRed);
  EXPECT_EQ(red.at(0).from, red.at(19).from);
  EXPECT_EQ(red.at(0).to, red.at(19).to);
  EXPECT_NEAR(Length(red.at(0)), 2000, 1e-9);
}

TEST(HipDiagramValues, NoStrokePassesTheEdge) {
  const Drawn drawn(With(Case("Default"), Side::L, false));
  const QPointF centre(2500, 5000 - 5000 / 4.7);
  for (const LineShape& stroke : Lines(drawn.picture, kRed)) {
    if (stroke.from.x() == 5700) continue;
    const double fromUpright = std::atan2(centre.x() - stroke.to.x(), centre.y() - stroke.to.y());
    EXPECT_LE(fromUpright, drawn.edge + 1e-12);
  }
}

TEST(HipDiagramValues, SmallStressMakesALongBar) {
  const Drawn drawn(Case("SmallStress"));
  const LineShape bar = Lines(drawn.picture, kRed).back();
  EXPECT_EQ(bar.from, QPointF(5700, 250));
  EXPECT_EQ(bar.to, QPointF(5700, 4250));
}

TEST(HipDiagramValues, StrokesDoNotDependOnTheSizeOfTheStress) {
  DiagramCase row = Case("Default");
  const Drawn drawn(row);
  row.stressScale = 17.0;
  const Drawn other(row);
  const auto red = Lines(drawn.picture, kRed);
  for (std::size_t i = 0; i < 22; ++i) EXPECT_EQ(red[i].to, Lines(other.picture, kRed).at(i).to);
}

TEST(HipDiagramValues, HeadStrokesOfFormDOnPaperAreAsLongAsTheShaft) {
  const auto heads = [](Side side, bool onPaper) {
    const Drawn drawn(With(Case("LargeForce"), side, onPaper));
    const auto blue = Lines(drawn.picture, kBlue);
    EXPECT_NEAR(Length(blue.at(0)), 3000, 1e-9);
    EXPECT_NEAR(Length(blue.at(1)), Length(blue.at(2)), 1e-9);
    return Length(blue.at(1));
  };
  EXPECT_NEAR(heads(Side::D, true), 3000, 1e-9);
  EXPECT_NEAR(heads(Side::L, true), 5000.0 / 15, 1e-9);
  EXPECT_NEAR(heads(Side::D, false), 5000.0 / 15, 1e-9);
  EXPECT_NEAR(heads(Side::L, false), 5000.0 / 15, 1e-9);
}

TEST(HipDiagramValues, StressOfZeroLeavesOutTheBarAlone) {
  DiagramCase row = Case("Default");
  row.stressScale = 0.0;
  const Drawn drawn(row);
  EXPECT_EQ(Lines(drawn.picture, kRed).size(), 22U);
  EXPECT_EQ(Lines(drawn.picture, kBlue).size(), 4U);
}

// Everything but the legend bars and the strokes that differ on purpose is the exact mirror image.
class MirrorImage : public testing::TestWithParam<bool> {};

TEST_P(MirrorImage, IsExactExceptWhereItDiffersOnPurpose) {
  const bool onPaper = GetParam();
  for (const DiagramCase& row : DiagramCases()) {
    const Drawn l(With(row, Side::L, onPaper));
    const Drawn d(With(row, Side::D, onPaper));
    const auto& left = l.picture.Drawings();
    const auto& right = d.picture.Drawings();
    ASSERT_EQ(left.size(), right.size());
    std::vector<std::size_t> different;
    for (std::size_t i = 0; i < left.size(); ++i) {
      const auto* a = std::get_if<LineShape>(&left[i].shape);
      const auto* b = std::get_if<LineShape>(&right[i].shape);
      if (a == nullptr) continue;  // arcs below
      ASSERT_NE(b, nullptr);
      const bool isBar = a->from.x() == 5700;
      const double mirrored = isBar ? b->to.x() : 5000 - b->to.x();
      const bool same =
          std::abs(mirrored - a->to.x()) < 1e-9 && std::abs(a->to.y() - b->to.y()) < 1e-9;
      if (!same) different.push_back(left.size() - i);
    }
    // Counted from the end: 1 line of action, 5 vertical, 7 and 8 head strokes.
    const std::vector<std::size_t> onPurpose =
        onPaper ? std::vector<std::size_t>{8, 7, 5} : std::vector<std::size_t>{1};
    EXPECT_EQ(different, onPurpose) << row.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Targets, MirrorImage, testing::Values(false, true),
                         [](const auto& row) { return row.param ? "Paper" : "Screen"; });

TEST(MirrorImageArcs, SpanTheSameAngleOnTheOtherSide) {
  const Drawn l(With(Case("Default"), Side::L, false));
  const Drawn d(With(Case("Default"), Side::D, false));
  const std::size_t count = l.picture.Drawings().size();
  for (const std::size_t i : {count - 3, count - 2}) {
    const auto& a = std::get<ArcShape>(l.picture.Drawings()[i].shape);
    const auto& b = std::get<ArcShape>(d.picture.Drawings()[i].shape);
    EXPECT_NEAR(a.start, std::acos(-1.0) - (b.start + b.sweep), 1e-12);
    EXPECT_NEAR(a.sweep, b.sweep, 1e-12);
    EXPECT_EQ(a.radius, b.radius);
  }
}

TEST(HipDiagramBox, ScreenClearsItAndPaperDoesNot) {
  for (const Side side : {Side::L, Side::D}) {
    PictureBox box;
    Vizual::DiagramLabels labels;
    std::vector<Vizual::PrintedText> texts;
    double e = 30, p = 16, r = 8;
    box.SetBackColor(kWhite);
    box.Line({0, 0}, {1, 1}, kRed);
    DrawHipDiagram(side, Vizual::Target::Printer(box, labels, texts), 2, 25, e, p, r, 2);
    EXPECT_EQ(box.BackColor(), kWhite);
    const std::size_t withOldLine = box.Drawings().size();
    e = 30, p = 16, r = 8;
    DrawHipDiagram(side, Vizual::Target::Screen(box, labels), 2, 25, e, p, r, 2);
    EXPECT_EQ(box.BackColor(), kButtonFace);
    EXPECT_EQ(box.Drawings().size(), withOldLine - 1);
    EXPECT_TRUE(box.AutoRedraw());
    EXPECT_EQ(labels.edgeAngle.backColor, kButtonFace);
  }
}

TEST(HipDiagramBox, OnlyFormLSwitchesAutoRedrawOn) {
  for (const Side side : {Side::L, Side::D}) {
    PictureBox box;
    Vizual::DiagramLabels labels;
    double e = 30, p = 16, r = 8;
    box.SetAutoRedraw(false);
    DrawHipDiagram(side, Vizual::Target::Screen(box, labels), 2, 25, e, p, r, 2);
    EXPECT_EQ(box.AutoRedraw(), side == Side::L);
  }
}

TEST(HipDiagramBox, OnlyFormLClearsItWhileAutoRedrawIsOff) {
  for (const Side side : {Side::L, Side::D}) {
    PictureBox box;
    Vizual::DiagramLabels labels;
    std::vector<bool> autoRedraw;  // at each change of what is seen
    double e = 30, p = 16, r = 8;
    box.SetBackColor(kWhite);
    box.OnChange([&] { autoRedraw.push_back(box.AutoRedraw()); });
    DrawHipDiagram(side, Vizual::Target::Screen(box, labels), 2, 25, e, p, r, 2);
    EXPECT_EQ(autoRedraw.front(), side == Side::D);
    EXPECT_TRUE(autoRedraw.back());
  }
}

TEST(HipDiagramBox, PenOfHeadAndFanIsTheCallers) {
  PictureBox box;
  Vizual::DiagramLabels labels;
  double e = 30, p = 16, r = 8;
  box.SetDrawStyle(LineStyle::Dotted);
  box.SetDrawWidth(3);
  DrawHipDiagram(Side::D, Vizual::Target::Screen(box, labels), 2, 25, e, p, r, 2);
  EXPECT_EQ(box.Drawings().at(0).pen, (Pen{kBlack, 3, LineStyle::Dotted}));
  EXPECT_EQ(box.Drawings().at(1).pen, (Pen{kRed, 3, LineStyle::Dotted}));
  EXPECT_EQ(box.Drawings().back().pen, (Pen{kBlack, 1, LineStyle::Dotted}));
}

// However broad and solid the pen is made between two strokes.
TEST(HipDiagramBox, ThePenIsSetAgainBeforeTheArrowAndBeforeEachReferenceLine) {
  PictureBox box;
  Vizual::DiagramLabels labels;
  double e = 30, p = 16, r = 8;
  box.OnChange([&box] {
    box.SetDrawStyle(LineStyle::Solid);
    box.SetDrawWidth(3);
  });
  DrawHipDiagram(Side::D, Vizual::Target::Screen(box, labels), 2, 25, e, p, r, 2);
  const auto& drawings = box.Drawings();
  // Counted from the end: 9 shaft, 5 vertical, 4 edge.
  EXPECT_EQ(drawings.at(drawings.size() - 9).pen, (Pen{kBlue, 1, LineStyle::Solid}));
  EXPECT_EQ(drawings.at(drawings.size() - 5).pen, (Pen{kBlack, 1, LineStyle::Dotted}));
  EXPECT_EQ(drawings.at(drawings.size() - 4).pen, (Pen{kBlack, 1, LineStyle::Dotted}));
}

TEST(HipDiagramBox, LetterOnPaperIsAtTheMarkerOfTheSide) {
  for (const Side side : {Side::L, Side::D}) {
    PictureBox box;
    Vizual::DiagramLabels labels;
    std::vector<Vizual::PrintedText> texts;
    labels.leftHip.left = 111;
    labels.leftHip.top = 222;
    labels.rightHip.left = 333;
    labels.rightHip.top = 444;
    double e = 30, p = 16, r = 8;
    DrawHipDiagram(side, Vizual::Target::Printer(box, labels, texts), 2, 25, e, p, r, 2, 1, 2);
    const Vizual::PrintedText letter = texts.back();
    EXPECT_EQ(letter.text, side == Side::L ? "L" : "D");
    EXPECT_EQ(letter.x, side == Side::L ? 334 : 112);
    EXPECT_EQ(letter.y, side == Side::L ? 446 : 224);
  }
}

TEST(HipDiagramForm, IsCrossedWithTheHip) {
  EXPECT_EQ(Vizual::FormOf(HipSide::Left), Side::D);
  EXPECT_EQ(Vizual::FormOf(HipSide::Right), Side::L);
  EXPECT_EQ(Vizual::FormOf(std::nullopt), Side::L);
}

TEST(HipDiagramAngles, TurnWithTheCoarsePiAndBack) {
  EXPECT_DOUBLE_EQ(Vizual::ToDiagramRadians(180), 3.14);
  EXPECT_DOUBLE_EQ(Vizual::ToDiagramDegrees(3.14), 180);
  EXPECT_DOUBLE_EQ(Vizual::ToDiagramRadians(Vizual::ToDiagramDegrees(0.5)), 0.5);
}

}  // namespace
