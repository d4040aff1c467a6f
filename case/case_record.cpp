// The run of the model over the record.
#include "case/case_record.h"

namespace Vse {

double HipForceKilonewtons(const CaseRecord& record) {
  constexpr double kNewtonsPerKilonewton = 1000.0;
  const double weight = record.data.inputs.bodyWeight.value_or(Sila::kAssumedBodyWeight);
  return record.results().rWb * weight * Sila::kGravity / kNewtonsPerKilonewton;
}

Sila::HipOutcome RunModel(CaseRecord& record) {
  const Sila::HipOutcome outcome = Sila::ComputeHip(record.data.inputs, record.model);
  if (outcome == Sila::HipOutcome::Ok) {
    record.stresses = Stresses::Own;
  } else if (record.stresses == Stresses::Own) {
    record.stresses = Stresses::OfCaseBefore;
  }
  return outcome;
}

}  // namespace Vse
