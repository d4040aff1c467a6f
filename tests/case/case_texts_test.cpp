// Results as people read them.
#include "case/case_texts.h"

#include <gtest/gtest.h>

namespace {

CaseRecord Record() {
  CaseRecord record;
  record.model.results = {.rWb = 2.8719,
                          .thetaR = {-3.456},
                          .thetaPol = {16.0},
                          .pmaxWb = {2245.678},
                          .pmax = {1234567.899}};
  record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
  return record;
}

TEST(ResultTexts, AreTruncatedToTwoDecimalsInTheLocalesWay) {
  const ResultTexts texts = Vse::ResultTextsOf(Record(), QLocale(QLocale::German));
  EXPECT_EQ(texts[Sila::Result::RWb], "2,87");
  EXPECT_EQ(texts[Sila::Result::ThetaR], "-3,46");  // downwards, also below zero
  EXPECT_EQ(texts[Sila::Result::ThetaPol], "16");
  EXPECT_EQ(texts[Sila::Result::PmaxWb], "2245,67");
  EXPECT_EQ(texts[Sila::Result::Pmax], "1234567,89");
  EXPECT_EQ(Vse::ResultTextsOf(Record(), QLocale::c())[Sila::Result::RWb], "2.87");
}

TEST(ResultTexts, HaveNoPeakStressWhileTheWeightIsUnknown) {
  CaseRecord record = Record();
  record.data.inputs.bodyWeight.reset();
  EXPECT_TRUE(Vse::ResultTextsOf(record, QLocale::c())[Sila::Result::Pmax].isEmpty());
}

TEST(HipForce, IsInKilonewtons) {
  EXPECT_NEAR(Vse::HipForceKilonewtons(Record()), 2.8719 * 0.6874, 1e-12);  // 70 kg weigh 687.4 N
}

}  // namespace
