// Cases for the tests of the 3D view.
#pragma once

#include <QLocale>
#include <QString>

#include "case/case_record.h"
#include "case/number_text.h"
#include "tests/support/default_inputs.h"

namespace head_cases {

// The case that the form offers at first, computed. Without a body weight 60 kg are computed with.
inline CaseRecord Default(double bodyWeight = 0.0, double edgeDegrees = 30.0) {
  CaseRecord record;
  record.data.inputs = DefaultInputs();
  record.data.inputs.thetaCE = {Sila::DegreesToRadians(edgeDegrees)};
  if (bodyWeight > 0.0) record.data.inputs.bodyWeight = Sila::Kilograms{bodyWeight};
  Vse::RunModel(record);
  return record;
}

// What the results panel shows.
inline QString PoleText(const CaseRecord& record) {
  return Vse::NumberText(Vse::TruncateToDecimals(record.results().thetaPol, 2), QLocale::c());
}

}  // namespace head_cases
