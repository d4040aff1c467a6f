// The case record's geometry by measure, and the run of the model over it.
#include "case/case_record.h"

#include <array>

namespace Vse {

namespace {

double Geometry::*Member(Measure measure) {
  constexpr std::array<double Geometry::*, kMeasureCount> kMembers = {
      &Geometry::lizm, &Geometry::xizm,  &Geometry::zizm,    &Geometry::Cizm,
      &Geometry::Hizm, &Geometry::zasuk, &Geometry::thetaCE, &Geometry::headRadius};
  return kMembers[static_cast<std::size_t>(measure)];
}

}  // namespace

double ValueOf(const Geometry& geometry, Measure measure) {
  return geometry.*Member(measure);
}

void SetValue(Geometry& geometry, Measure measure, double value) {
  geometry.*Member(measure) = value;
}

double HipForceKilonewtons(const CaseRecord& record) {
  constexpr double kNewtonsPerKilonewton = 1000.0;
  return record.results.rWb * record.bodyWeight * Sila::kGravity / kNewtonsPerKilonewton;
}

Sila::HipOutcome RunModel(CaseRecord& record) {
  const Geometry& g = record.geometry;
  const Sila::HipInputs inputs = {.lizm = {g.lizm},
                                  .xizm = {g.xizm},
                                  .zizm = {g.zizm},
                                  .Cizm = {g.Cizm},
                                  .Hizm = {g.Hizm},
                                  .zasuk = {g.zasuk},
                                  .thetaCE = {g.thetaCE},
                                  .headRadius = {g.headRadius},
                                  .bodyWeight = Sila::Kilograms{record.bodyWeight}};
  const Sila::HipOutcome outcome = Sila::ComputeHip(inputs, record.model);
  record.results.rWb = record.model.force.rWb;
  record.results.thetaR = record.model.force.thetaR;
  if (outcome == Sila::HipOutcome::Ok) {
    record.results.thetaPol = record.model.stress.thetaPol;
    record.results.pmaxWb = record.model.stress.pmaxWb;
    record.results.pmax = record.model.stress.pmax;
    record.stresses = CaseRecord::Stresses::Own;
  } else if (record.stresses == CaseRecord::Stresses::Own) {
    record.stresses = CaseRecord::Stresses::OfCaseBefore;
  }
  return outcome;
}

}  // namespace Vse
