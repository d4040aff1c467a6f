// The tables of measurements and results: every row reaches its own number, and units convert.
#include "model/vocabulary.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace {

using Sila::Kind;
using Sila::Unit;

TEST(Measurements, EachRowReachesANumberOfItsOwn) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    Sila::HipInputs inputs;
    inputs.bodyWeight = Sila::Kilograms{0.0};
    Sila::SetValue(inputs, row, 7.5);
    for (const Sila::MeasurementRow& other : Sila::kMeasurements) {
      EXPECT_EQ(Sila::ValueOf(inputs, other), other.id == row.id ? 7.5 : 0.0)
          << row.key << ", " << other.key;
    }
  }
}

TEST(Measurements, AreKeptUnderTheirOwnNames) {
  Sila::HipInputs inputs;
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Lizm), 1.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Xizm), 2.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Zizm), 3.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Cizm), 4.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Hizm), 5.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::Zasuk), 6.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::ThetaCE), 7.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::HeadRadius), 8.0);
  Sila::SetValue(inputs, Sila::RowOf(Sila::Measurement::BodyWeight), 9.0);
  const Sila::HipInputs expected = {.lizm = {1.0},
                                    .xizm = {2.0},
                                    .zizm = {3.0},
                                    .Cizm = {4.0},
                                    .Hizm = {5.0},
                                    .zasuk = {6.0},
                                    .thetaCE = {7.0},
                                    .headRadius = {8.0},
                                    .bodyWeight = Sila::Kilograms{9.0}};
  EXPECT_TRUE(inputs == expected);
}

TEST(Measurements, ABodyWeightThatIsNotKnownCountsAsTheAssumedOne) {
  const Sila::HipInputs inputs;
  EXPECT_EQ(Sila::ValueOf(inputs, Sila::RowOf(Sila::Measurement::BodyWeight)), 60.0);
}

template <class Rows>
void ExpectDifferentKeys(const Rows& rows) {
  std::set<std::string_view> keys;
  for (const auto& row : rows) EXPECT_TRUE(keys.insert(row.key).second) << row.key;
}

TEST(Vocabulary, HasNoKeyTwice) {
  ExpectDifferentKeys(Sila::kMeasurements);
  ExpectDifferentKeys(Sila::kResults);
}

TEST(Units, HoldLengthsInCentimetresRadiiInMetresAndAnglesInRadians) {
  EXPECT_EQ(Sila::ToHeld(Kind::Length, Unit::Millimetre, 104.0), 10.4);
  EXPECT_EQ(Sila::ToHeld(Kind::Length, Unit::Centimetre, 10.4), 10.4);
  EXPECT_EQ(Sila::ToHeld(Kind::Radius, Unit::Millimetre, 25.0), 0.025);
  EXPECT_EQ(Sila::ToHeld(Kind::Radius, Unit::Centimetre, 2.5), 0.025);
  EXPECT_EQ(Sila::ToHeld(Kind::Radius, Unit::Metre, 0.025), 0.025);
  EXPECT_EQ(Sila::ToHeld(Kind::Angle, Unit::Degree, 30.0), 30.0 * 3.14159265358979 / 180.0);
  EXPECT_EQ(Sila::ToHeld(Kind::Angle, Unit::Radian, 0.5), 0.5);
  EXPECT_EQ(Sila::ToHeld(Kind::Weight, Unit::Kilogram, 70.0), 70.0);
}

TEST(Units, ComeBackFromTheHeldOne) {
  for (const Kind kind : {Kind::Length, Kind::Angle, Kind::Radius, Kind::Weight}) {
    for (const Unit unit : Sila::UnitsOf(kind)) {
      EXPECT_NEAR(Sila::FromHeld(kind, unit, Sila::ToHeld(kind, unit, 12.3)), 12.3, 1e-14);
    }
  }
}

// One value a row: what is held under one name must not be read under another.
TEST(Results, EachRowReachesANumberOfItsOwn) {
  const Sila::HipResults results = {
      .rWb = 1.0, .thetaR = {2.0}, .thetaPol = {3.0}, .pmaxWb = {4.0}, .pmax = {5.0}};
  EXPECT_EQ(Sila::RowOf(Sila::Result::RWb).value(results), 1.0);
  EXPECT_EQ(Sila::RowOf(Sila::Result::ThetaR).value(results), 2.0);
  EXPECT_EQ(Sila::RowOf(Sila::Result::ThetaPol).value(results), 3.0);
  EXPECT_EQ(Sila::RowOf(Sila::Result::PmaxWb).value(results), 4.0);
  EXPECT_EQ(Sila::RowOf(Sila::Result::Pmax).value(results), 5.0);
}

// Only the peak stress in pascals would show a weight that nobody has measured.
TEST(Results, HideThePeakStressAloneWithoutABodyWeight) {
  for (const Sila::ResultRow& row : Sila::kResults) {
    EXPECT_EQ(row.needsWeight, row.id == Sila::Result::Pmax) << row.key;
  }
}

}  // namespace
