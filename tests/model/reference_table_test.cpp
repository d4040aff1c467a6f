// The whole model against a table from a separate computation in 50 digits, made by
// tests/reference/make_hips.py.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "model/hip_model.h"

namespace {

using Row = std::map<std::string, std::string>;

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::stringstream rest(line + ',');
  for (std::string cell; std::getline(rest, cell, ',');) cells.push_back(cell);
  return cells;
}

std::vector<Row> ReadTable() {
  std::ifstream file(TELMARION_SOURCE_DIR "/tests/reference/hips.csv");
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> header = Cells(line);
  std::vector<Row> rows;
  while (std::getline(file, line)) {
    const std::vector<std::string> cells = Cells(line);
    Row& row = rows.emplace_back();
    for (std::size_t i = 0; i < header.size(); ++i) row[header[i]] = cells.at(i);
  }
  return rows;
}

double Number(const Row& row, const std::string& column) {
  return std::strtod(row.at(column).c_str(), nullptr);
}

// The table names its columns like the measurements.
Sila::HipInputs InputsOf(const Row& row) {
  Sila::HipInputs inputs;
  for (const Sila::MeasurementRow& measurement : Sila::kMeasurements) {
    Sila::SetValue(inputs, measurement, Number(row, std::string(measurement.key)));
  }
  return inputs;
}

const char* NameOf(Sila::HipOutcome outcome) {
  switch (outcome) {
    case Sila::HipOutcome::Ok:
      return "Ok";
    case Sila::HipOutcome::OutOfRange:
      return "OutOfRange";
    case Sila::HipOutcome::NoPole:
      return "NoPole";
    case Sila::HipOutcome::DivisionByZero:
      return "DivisionByZero";
  }
  return "";
}

// Errors that a run in double precision may have. The force goes through some twenty operations of
// which the sum of the moments loses most: `kForce` is fifty roundings, with the table's own
// measure of how much the solve multiplies them.
constexpr double kRounding = 0x1p-53;
constexpr double kForce = 50.0 * kRounding;

void ExpectForce(const Row& row, const Sila::HipForce& force) {
  const double relative = kForce * Number(row, "solveLoss");
  const auto expectNear = [&](const char* column, double value, double scale) {
    EXPECT_NEAR(value, Number(row, column), relative * scale) << column;
  };
  const double largest = std::max({std::abs(Number(row, "fg1")), std::abs(Number(row, "fg2")),
                                   std::abs(Number(row, "fg3")), std::abs(Number(row, "R"))});
  expectNear("fg1", force.groups[0].tension, largest);
  expectNear("fg2", force.groups[1].tension, largest);
  expectNear("fg3", force.groups[2].tension, largest);
  expectNear("R", force.resultantMagnitude, largest);
  expectNear("rWb", force.rWb, largest / force.loads.weight);
  expectNear("thetaR", force.thetaR, 90.0 * largest / Number(row, "R"));
}

// Newton's method stops at a residual below 1e-10, and the residual grows by at least a third of
// the angle: the pole may be off by three times the residual that is left, and by rounding.
void ExpectStress(const Row& row, const Sila::HipState& state) {
  const Tlakm::ContactStress& stress = state.stress;
  EXPECT_EQ(stress.form == Tlakm::PoleForm::Steep ? "Steep" : "Ordinary", row.at("form"));
  EXPECT_LT(std::abs(stress.residual), 1e-10);
  const double forceLoss = kForce * Number(row, "solveLoss");
  const double pole = 3.0 * std::abs(stress.residual) + Number(row, "poleNoise") + 3.0 * forceLoss;
  EXPECT_NEAR(stress.thetaPolRad * 180.0 / Tlakm::kPi, Number(row, "thetaPol"), 60.0 * pole);
  EXPECT_EQ(stress.thetaPol, stress.thetaPolRad * 180.0 / Tlakm::kPi);

  const double relative =
      forceLoss + 10.0 * kRounding + pole * (1.0 + Number(row, "stressPerRadian"));
  const auto expectNear = [&](const char* column, double value) {
    EXPECT_NEAR(value, Number(row, column), relative * Number(row, column)) << column;
  };
  expectNear("p0", stress.p0);
  expectNear("pmax", stress.pmax);
  expectNear("pmaxWb", stress.pmaxWb);
}

TEST(ReferenceTable, HoldsEveryKindOfHip) {
  std::map<std::string, int> kinds;
  for (const Row& row : ReadTable()) ++kinds[row.at("outcome") + row.at("form")];
  EXPECT_GT(kinds["OkOrdinary"], 150);
  EXPECT_GT(kinds["OkSteep"], 40);
  EXPECT_GT(kinds["NoPole"], 5);
  EXPECT_GT(kinds["OutOfRange"], 2);
  EXPECT_GT(kinds["DivisionByZero"], 1);
}

TEST(ReferenceTable, IsMetToTheLastDigitsOfADouble) {
  Sila::HipState state;
  for (const Row& row : ReadTable()) {
    SCOPED_TRACE(row.at("name"));
    const Sila::HipOutcome outcome = Sila::ComputeHip(InputsOf(row), state);
    EXPECT_EQ(NameOf(outcome), row.at("outcome"));
    if (!row.at("rWb").empty()) ExpectForce(row, state.force);
    if (!row.at("pmax").empty()) ExpectStress(row, state);
  }
}

}  // namespace
