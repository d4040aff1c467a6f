// What the 3D view shows of a case.
#pragma once

#include <QString>

#include "case/case_record.h"

struct HeadCase {
  double edgeAngle = 0.0;      // rad, lateral edge of the weight-bearing area
  double poleAngle = 0.0;      // rad, pole of the stress
  double scalePeak = 0.0;      // peak stress in percent of the legend's top
  bool perBodyWeight = false;  // legend: 7000 m^-2 per body weight at the top, or else 4 MPa
};

// `thetaPolText` is what the results panel shows as "Theta-pol", degrees: the head has the pole
// where the panel says it is, truncated to two decimals, and not where the record has it. Text that
// is not a number counts as 0.
HeadCase HeadCaseOf(const CaseRecord& record, const QString& thetaPolText);

// The edge angle in whole degrees, rounded down. An angle that was typed in whole degrees gives
// them back, whatever its radians were rounded to.
int WholeDegrees(double radians);
