// What the rows of a table of default uncertainties name, and in which unit.
#include "columns/default_reading.h"

#include <gtest/gtest.h>

#include "columns/cohort_error.h"
#include "tests/support/row_name.h"

namespace {

using Sila::Measurement;

struct Row {
  const char* name;
  const char* reading;
  const char* unit;
  std::optional<Measurement> measurement;
  double held;  // of a u of 1
};

class DefaultReading : public testing::TestWithParam<Row> {};

TEST_P(DefaultReading, NamesAMeasurementAndItsUnit) {
  const Row& row = GetParam();
  const Cohort::DefaultReading reading = Cohort::DefaultReadingNamed(row.reading);
  EXPECT_EQ(reading.measurement, row.measurement);
  EXPECT_NEAR(Cohort::HeldDefault(reading, row.unit, 1.0), row.held, 1e-14);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DefaultReading,
    testing::Values(Row{"Plain", "lizm", "", Measurement::Lizm, 1.0},
                    Row{"WithTheColumnsEnding", "lizm_u", "", Measurement::Lizm, 1.0},
                    Row{"InAnyCase", " LIZM_U ", "", Measurement::Lizm, 1.0},
                    Row{"UnitBeside", "lizm", "mm", Measurement::Lizm, 0.1},
                    Row{"UnitInTheName", "lizm[mm]", "", Measurement::Lizm, 0.1},
                    Row{"TheSameUnitTwice", "lizm_u (MM)", "mm", Measurement::Lizm, 0.1},
                    Row{"Radius", "headRadius", "", Measurement::HeadRadius, 1.0},
                    Row{"RadiusInCentimetres", "headRadius[cm]", "", Measurement::HeadRadius, 0.01},
                    Row{"Angle", "thetaCE", "", Measurement::ThetaCE, 0.017453292519943295},
                    Row{"AngleInRadians", "thetaCE", "rad", Measurement::ThetaCE, 1.0},
                    Row{"Magnification", "magnification", "", std::nullopt, 1.0},
                    Row{"MagnificationIsARatio", "magnification_u", "1", std::nullopt, 1.0}),
    RowName());

struct Refusal {
  const char* name;
  const char* reading;
  const char* unit;
  const char* words;
};

class RefusedDefault : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedDefault, SaysWhy) {
  const Refusal& row = GetParam();
  try {
    Cohort::HeldDefault(Cohort::DefaultReadingNamed(row.reading), row.unit, 1.0);
    ADD_FAILURE() << "nothing is said";
  } catch (const Cohort::CohortError& error) {
    EXPECT_STREQ(error.what(), row.words);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, RefusedDefault,
                         testing::Values(Refusal{"Unknown", "age", "", "\"age\" is no measurement"},
                                         Refusal{
                                             "Near", "theta_ce", "",
                                             "\"theta_ce\" is no measurement; is thetaCE meant?"},
                                         Refusal{"UnitOfAnotherKind", "lizm", "deg",
                                                 "the unit \"deg\" does not fit; known are cm, mm"},
                                         Refusal{"UnitInTheNameOfAnotherKind", "lizm[deg]", "",
                                                 "the unit \"deg\" does not fit; known are cm, mm"},
                                         Refusal{"TwoUnits", "lizm[mm]", "cm",
                                                 "the unit \"cm\" is not that of the name, \"mm\""},
                                         Refusal{"UnitOfAMagnification", "magnification[cm]", "",
                                                 "a magnification has no unit, not \"cm\""}),
                         RowName());

}  // namespace
