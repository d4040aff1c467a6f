// From a computed case to what is drawn of it: angles, scales, form and marker.
#include "diagram/case_diagram.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

#include <cmath>
#include <numbers>
#include <vector>

#include "tests/support/default_inputs.h"

namespace {

CaseRecord Computed(std::optional<HipSide> hip = HipSide::Left, double bodyWeight = 70.0) {
  CaseRecord record;
  record.data.patient.hip = hip;
  record.data.inputs = DefaultInputs();
  record.data.inputs.bodyWeight = Sila::Kilograms{bodyWeight};
  EXPECT_EQ(Vse::RunModel(record), Sila::HipOutcome::Ok);
  return record;
}

// A case drawn on screen or on paper.
struct DrawnCase {
  explicit DrawnCase(const CaseRecord& record, bool absolute = true, bool onPaper = false) {
    Vizual::DrawCaseDiagram(record, absolute,
                            onPaper ? Vizual::Target::Printer(box, labels, texts)
                                    : Vizual::Target::Screen(box, labels));
  }

  std::vector<LineShape> Lines(Colour colour) const {
    std::vector<LineShape> lines;
    for (const Drawing& drawing : box.Drawings()) {
      const auto* line = std::get_if<LineShape>(&drawing.shape);
      if (line != nullptr && drawing.pen.colour == colour) lines.push_back(*line);
    }
    return lines;
  }
  // Of a stroke away from the centre, radians from the upright to the right.
  double Direction(const LineShape& line) const {
    const auto& head = std::get<ArcShape>(box.Drawings().at(0).shape);
    return std::atan2(line.to.x() - head.centre.x(), head.centre.y() - line.to.y());
  }
  double HeadRadius() const { return std::get<ArcShape>(box.Drawings().at(0).shape).radius; }

  PictureBox box;
  Vizual::DiagramLabels labels;
  std::vector<Vizual::PrintedText> texts;
};

double Length(const LineShape& line) {
  return std::hypot(line.to.x() - line.from.x(), line.to.y() - line.from.y());
}

// The edge's angle goes to degrees and back with one and the same coarse π; those of pole and force
// are degrees from the beginning.
TEST(CaseDiagram, DrawsTheEdgeAtItsTrueAngleAndPoleAndForceWithTheCoarsePi) {
  const CaseRecord record = Computed();
  for (const bool onPaper : {false, true}) {
    const DrawnCase drawn(record, true, onPaper);
    EXPECT_NEAR(drawn.Direction(drawn.Lines(kBlack).at(1)), std::numbers::pi / 6.0, 1e-12);
    EXPECT_NEAR(drawn.Direction(drawn.Lines(kRed).at(0)), record.results().thetaPol * 3.14 / 180.0,
                1e-12);
    EXPECT_NEAR(drawn.Direction(drawn.Lines(kBlue).at(0)), -record.results().thetaR * 3.14 / 180.0,
                1e-12);
  }
}

TEST(CaseDiagram, CountsInMegapascalsAndKilonewtonsOrPerBodyWeight) {
  const CaseRecord record = Computed();
  const DrawnCase absolute(record, true);
  EXPECT_NEAR(Length(absolute.Lines(kRed).back()), 2000.0 / (record.results().pmax / 1e6), 1e-9);
  EXPECT_NEAR(Length(absolute.Lines(kBlue).at(0)), record.results().rWb * 70.0 * 9.82, 1e-9);
  EXPECT_EQ(absolute.labels.stressLegend.caption, "Pmax           1 MPa");
  const DrawnCase perWeight(record, false);
  EXPECT_NEAR(Length(perWeight.Lines(kRed).back()), 2000.0 / (record.results().pmaxWb / 1e3), 1e-9);
  EXPECT_NEAR(Length(perWeight.Lines(kBlue).at(0)), 1000.0 * record.results().rWb, 1e-9);
  EXPECT_EQ(perWeight.labels.stressLegend.caption, "Pmax/Wb     1000 m^-2");
}

TEST(CaseDiagram, DrawsTheHeadInMillimetres) {
  CaseRecord record = Computed();
  EXPECT_NEAR(DrawnCase(record).HeadRadius(), 5000.0 / 7.0, 1e-9);
  record.data.inputs.headRadius = {0.021};
  EXPECT_NEAR(DrawnCase(record).HeadRadius(), 5000.0 / 7.0 * 21.0 / 25.0, 1e-9);
}

TEST(CaseDiagram, MarksTheHipThatIsDrawnInTheOtherForm) {
  const std::array<std::optional<HipSide>, 3> hips = {HipSide::Left, HipSide::Right, {}};
  for (const std::optional<HipSide> hip : hips) {
    const bool left = hip == HipSide::Left;
    const DrawnCase drawn(Computed(hip), true, true);
    EXPECT_EQ(drawn.labels.leftHip.visible, left) << left;
    EXPECT_EQ(drawn.labels.rightHip.visible, !left) << left;
    EXPECT_EQ(drawn.texts.back().text, left ? "D" : "L") << left;
  }
}

}  // namespace
