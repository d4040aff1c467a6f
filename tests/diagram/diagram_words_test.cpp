// The diagram in words.
#include "diagram/case_diagram.h"

#include <gtest/gtest.h>

#include "tests/support/default_inputs.h"

namespace {

CaseRecord Computed(HipSide hip, bool weightUnknown) {
  CaseRecord record;
  record.data.patient.hip = hip;
  record.data.inputs = DefaultInputs();
  if (!weightUnknown) record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
  EXPECT_EQ(Vse::RunModel(record), Sila::HipOutcome::Ok);
  return record;
}

TEST(DiagramWords, DescribeTheCaseInTheUnitsThatAreDrawn) {
  EXPECT_EQ(Vizual::DiagramWords(Computed(HipSide::Left, false), QLocale::c()),
            "Left hip. The resultant force of 1.93 kN is inclined by 8.47 ° to the vertical. The "
            "contact stress has its pole at 16.41 ° and its peak of 2066847.58 Pa; the edge of the "
            "socket is at 30 °.");
}

TEST(DiagramWords, CountInBodyWeightsWhereTheWeightIsNotKnown) {
  const QString words = Vizual::DiagramWords(Computed(HipSide::Right, true), QLocale("de_DE"));
  EXPECT_TRUE(words.startsWith("Right hip. The resultant force of 2,81 body weights"))
      << words.toStdString();
  EXPECT_TRUE(words.contains("peak of 3006,76 m^-2 over body weight")) << words.toStdString();
}

}  // namespace
