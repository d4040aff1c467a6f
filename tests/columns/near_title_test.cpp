// Which names are taken for another's, and which are names of their own.
#include "columns/near_title.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Close {
  const char* title;
  const char* measurement;
  bool sameLetters;
};

TEST(NearTitle, IsFoundWhereANameIsCloseToAMeasurements) {
  for (const Close& row : {Close{"body_weight", "bodyWeight", true},
                           {"Body Weight", "bodyWeight", true},
                           {"body-weight (lb)", "bodyWeight", true},
                           {"bodyWeight.kg.", "bodyWeight", true},
                           {"bodyWeight_kg", "bodyWeight", true},
                           {"bodyweightkg", "bodyWeight", true},
                           {"[bodyWeight]", "bodyWeight", true},
                           {"'bodyWeight'", "bodyWeight", true},
                           {"bodyWeight:", "bodyWeight", true},
                           {"weight", "bodyWeight", false},
                           {"Weight [kg]", "bodyWeight", false},
                           {"weight_kg", "bodyWeight", false},
                           {"BW", "bodyWeight", false},
                           {"body mass", "bodyWeight", false},
                           {"bodyweigth", "bodyWeight", false},
                           {"bodyWeigt", "bodyWeight", false},
                           {"BODYWE\u0130GHT", "bodyWeight", false},
                           {"theta CE", "thetaCE", true},
                           {"theta_ce", "thetaCE", true},
                           {"theta-CE", "thetaCE", true},
                           {"thetaCE..deg.", "thetaCE", true},
                           {"CE angle", "thetaCE", false},
                           {"thetaC", "thetaCE", false},
                           {"head radius", "headRadius", true},
                           {"headRadius_mm", "headRadius", true},
                           {"radius of head", "headRadius", false},
                           {"headradious", "headRadius", false},
                           {"lizm.mm.", "lizm", true},
                           {"lizm_mm", "lizm", true},
                           {"lizmmm", "lizm", true},
                           {"zazuk", "zasuk", false}}) {
    const std::optional<Cohort::NearTitle> near = Cohort::FindNearTitle(row.title);
    ASSERT_TRUE(near.has_value()) << row.title;
    EXPECT_EQ(Sila::RowOf(near->measurement).key, row.measurement) << row.title;
    EXPECT_EQ(near->sameLetters, row.sameLetters) << row.title;
  }
}

TEST(NearTitle, IsNotFoundForANameOfItsOwn) {
  for (const char* title : {"",
                            " ",
                            "patient",
                            "patient_id",
                            "age",
                            "id",
                            "ID",
                            "no",
                            "name",
                            "Name",
                            "sex",
                            "side",
                            "hip",
                            "remark",
                            "comments",
                            "status",
                            "status2",
                            "Status",
                            "date",
                            "dateOfBirth",
                            "height",
                            "bodyHeight",
                            "body_height (cm)",
                            "BMI",
                            "birthWeight",
                            "weight_bearing",
                            "overweight",
                            "lizm_u",
                            "lizm2",
                            "kizm",
                            "cizma",
                            "C",
                            "H",
                            "x",
                            "z",
                            "l/2",
                            "rWb2",
                            "thetaR2",
                            "thetaPol2",
                            "pmax_old",
                            "theta",
                            "head",
                            "headDiameter",
                            "radiologist",
                            "centre",
                            "center",
                            "group",
                            "kg",
                            "mm",
                            "[mm]",
                            "unit",
                            "year",
                            "lab",
                            "site",
                            "km",
                            "visit",
                            "\xFF\xFE",
                            "\u4F53\u91CD"}) {
    EXPECT_FALSE(Cohort::FindNearTitle(title).has_value()) << title;
  }
}

TEST(NearTitle, TakesAnyLength) {
  EXPECT_FALSE(Cohort::FindNearTitle(std::string(10'000'000, 'a')).has_value());
}

}  // namespace
