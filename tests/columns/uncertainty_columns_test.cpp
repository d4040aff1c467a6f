// Columns that say how uncertain measurements are: which titles name them, in which unit they are,
// and what is said of those that come close.
#include "columns/uncertainty_columns.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "columns/cohort_error.h"
#include "columns/header.h"
#include "columns/near_title.h"
#include "tests/support/row_name.h"

namespace {

using Sila::Measurement;
using Sila::Unit;

constexpr const char* kPlain = "lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight";

Cohort::Columns Find(const std::string& header) {
  std::vector<std::string> names;
  std::istringstream text(header);
  for (std::string name; std::getline(text, name, ',');) names.push_back(name);
  return Cohort::FindColumns(std::move(names));
}

Cohort::Columns FindBesidePlain(const std::string& title) {
  return Find(std::string(kPlain) + ',' + title);
}

constexpr std::size_t kBeside = 9;  // the field behind those of the plain header

std::optional<Cohort::UncertaintyColumn> ColumnOf(const Cohort::Columns& columns, Measurement id) {
  return columns.uncertainty.u[Sila::IndexOf(id)];
}

TEST(UncertaintyColumns, AreThereForEveryMeasurement) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const Cohort::Columns columns = FindBesidePlain(std::string(row.key) + "_u");
    ASSERT_TRUE(ColumnOf(columns, row.id).has_value()) << row.key;
    EXPECT_EQ(ColumnOf(columns, row.id)->field, kBeside) << row.key;
    EXPECT_EQ(ColumnOf(columns, row.id)->unit, Sila::UnitsOf(row.kind()).front()) << row.key;
    EXPECT_TRUE(columns.uncertainty.Any());
    EXPECT_TRUE(Cohort::IsInput(columns, kBeside));
    EXPECT_TRUE(columns.remarks.empty()) << row.key;
  }
}

TEST(UncertaintyColumns, AreNotThereInAPlainTable) {
  const Cohort::Columns columns = FindBesidePlain("pmax_u");
  EXPECT_FALSE(columns.uncertainty.Any());
  EXPECT_FALSE(Cohort::IsInput(columns, kBeside));
}

TEST(UncertaintyColumns, OfTheMagnificationAreItAndItsOwn) {
  const Cohort::Columns columns = FindBesidePlain("Magnification,MAGNIFICATION_U");
  EXPECT_EQ(columns.uncertainty.magnification, kBeside);
  EXPECT_EQ(columns.uncertainty.magnificationU, kBeside + 1);
  EXPECT_TRUE(columns.remarks.empty());
}

struct UnitRow {
  const char* name;
  std::string header;  // the radius and its uncertainty, or the angle and its
  Measurement measurement;
  std::optional<Unit> unit;
};

class UncertaintyUnits : public testing::TestWithParam<UnitRow> {};

TEST_P(UncertaintyUnits, AreTheirOwnOrThoseOfTheMeasurement) {
  const auto column = ColumnOf(Find(GetParam().header), GetParam().measurement);
  ASSERT_TRUE(column.has_value());
  EXPECT_EQ(column->unit, GetParam().unit);
}

INSTANTIATE_TEST_SUITE_P(
    Table, UncertaintyUnits,
    testing::Values(
        UnitRow{"Own", "headRadius,headRadius_u[mm]", Measurement::HeadRadius, Unit::Millimetre},
        UnitRow{"OwnBeforeThoseOfTheMeasurement", "headRadius[cm],headRadius_u (mm)",
                Measurement::HeadRadius, Unit::Millimetre},
        UnitRow{"OfTheMeasurement", "headRadius[mm],headRadius_u", Measurement::HeadRadius,
                Unit::Millimetre},
        UnitRow{"OfAMeasurementThatFollows", "Lizm_U,lizm[mm]", Measurement::Lizm,
                Unit::Millimetre},
        UnitRow{"DegreesBesideRadians", "thetaCE[rad],thetaCE_u[deg]", Measurement::ThetaCE,
                Unit::Degree},
        UnitRow{"Unfit", "thetaCE,thetaCE_u[mm]", Measurement::ThetaCE, std::nullopt},
        UnitRow{"UnfitBesideAnother", "lizm[mm],lizm_u[deg]", Measurement::Lizm, std::nullopt}),
    RowName());

void ExpectRefused(const std::string& header, const std::string& sentence) {
  try {
    Find(header);
    ADD_FAILURE() << header << " is accepted";
  } catch (const Cohort::CohortError& error) {
    EXPECT_EQ(error.what(), sentence);
  }
}

TEST(UncertaintyColumns, NeedAUnitBesideAnAngleInRadians) {
  ExpectRefused("thetaCE[rad],thetaCE_u",
                "the column thetaCE_u needs a unit, since thetaCE is in radians; known are °, deg, "
                "rad");
}

TEST(UncertaintyColumns, AreThereOnce) {
  ExpectRefused("lizm_u,LIZM_U[mm]", "there are two columns lizm_u");
  ExpectRefused("magnification,Magnification", "there are two columns magnification");
  ExpectRefused("magnification_u,magnification_u", "there are two columns magnification_u");
}

TEST(UncertaintyColumns, OfAMeasurementThatIsNotThereAreRemarkedOn) {
  EXPECT_EQ(Find("lizm,bodyWeight_u").remarks,
            (std::vector<std::string>{"the column bodyWeight_u is not used, since there is no "
                                      "column bodyWeight"}));
}

struct CloseRow {
  const char* title;
  const char* meant;
};

TEST(NearUncertainty, IsFoundWhereATitleIsCloseToOne) {
  for (const CloseRow& row : {CloseRow{"lizm u", "lizm_u"},
                              {"lizm-u [mm]", "lizm_u"},
                              {"lizm.u.mm.", "lizm_u"},
                              {"lizmu", "lizm_u"},
                              {"u(lizm)", "lizm_u"},
                              {"u_lizm", "lizm_u"},
                              {"thetaCE_sd", "thetaCE_u"},
                              {"theta CE unc", "thetaCE_u"},
                              {"CE_u", "thetaCE_u"},
                              {"headRadius uncertainty (mm)", "headRadius_u"},
                              {"headRadus_u", "headRadius_u"},
                              {"weight_u", "bodyWeight_u"},
                              {"bodyWeigth_u", "bodyWeight_u"},
                              {"magnification u", "magnification_u"},
                              {"magnificationu", "magnification_u"},
                              {"magnificaton_u", "magnification_u"},
                              {"magnificaton", "magnification"},
                              {"Magnification factor", "magnification"},
                              {"mag", "magnification"}}) {
    EXPECT_EQ(Cohort::FindNearUncertainty(row.title), row.meant) << row.title;
    EXPECT_EQ(FindBesidePlain(row.title).remarks.size(), 1U) << row.title;
  }
}

TEST(NearUncertainty, IsNotFoundForANameOfItsOwn) {
  for (const char* title : {"", "u", "sd", "pmax_u", "rWb_sd", "age_u", "image", "magnet",
                            "height_u", "xizm2_u", "u(age)", "lizm", "weight", "error"}) {
    EXPECT_EQ(Cohort::FindNearUncertainty(title), std::nullopt) << title;
  }
}

TEST(AddedNames, SayTheCoverageInPercent) {
  const std::vector<std::string> names = Cohort::AddedUncertaintyNames(0.95);
  const std::vector<std::string> wanted = {
      "rWb_u",      "rWb_lo95",      "rWb_hi95",      "thetaR_u",  "thetaR_lo95", "thetaR_hi95",
      "thetaPol_u", "thetaPol_lo95", "thetaPol_hi95", "pmaxWb_u",  "pmaxWb_lo95", "pmaxWb_hi95",
      "pmax_u",     "pmax_lo95",     "pmax_hi95",     "mc_trials", "mc_ok"};
  EXPECT_EQ(names, wanted);
  EXPECT_EQ(Cohort::AddedUncertaintyNames(0.9)[1], "rWb_lo90");
  EXPECT_EQ(Cohort::AddedUncertaintyNames(0.975)[1], "rWb_lo97.5");
  EXPECT_EQ(Cohort::AddedUncertaintyNames(0.57)[1], "rWb_lo57");
}

TEST(AddedNames, AreRefusedInATableThatHasThem) {
  const Cohort::Columns columns = FindBesidePlain("pmax_u");
  EXPECT_THROW(Cohort::CheckAreNotAdded(columns, Cohort::AddedUncertaintyNames(0.95)),
               Cohort::CohortError);
  EXPECT_NO_THROW(
      Cohort::CheckAreNotAdded(FindBesidePlain("pmax_lo95"), Cohort::AddedUncertaintyNames(0.9)));
}

}  // namespace
