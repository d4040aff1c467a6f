// The case record's texts and the run of the model over it.
#include "case/case_record.h"

namespace Vse {

double DegreesToRadians(double degrees) {
  return degrees * Sila::kPi / 180.0;
}

double RadiansToDegrees(double radians) {
  return radians * 180.0 / Sila::kPi;
}

QString TextOr(const QString& text, QStringView placeholder) {
  return text.isEmpty() ? placeholder.toString() : text;
}

QString ComposeName(const QString& surname, const QString& firstName) {
  const QString last = surname.trimmed();
  const QString first = firstName.trimmed();
  if (last.isEmpty() && first.isEmpty()) return kUnknown.toString();
  return last + QLatin1Char(' ') + first;
}

Sila::HipOutcome RunModel(CaseRecord& record) {
  const Geometry& g = record.geometry;
  const Sila::HipForceInputs force = {.lizm = g.lizm,
                                      .xizm = g.xizm,
                                      .zizm = g.zizm,
                                      .Cizm = g.Cizm,
                                      .Hizm = g.Hizm,
                                      .zasuk = g.zasuk,
                                      .bodyWeight = record.bodyWeight};
  const Sila::HipOutcome outcome = Sila::ComputeHip({force, g.thetaCE, g.headRadius}, record.model);
  record.results.rWb = record.model.force.rWb;
  record.results.thetaR = record.model.force.thetaR;
  if (outcome == Sila::HipOutcome::Ok) {
    record.results.thetaPol = record.model.stress.thetaPol;
    record.results.pmaxWb = record.model.stress.pmaxWb;
    record.results.pmax = record.model.stress.pmax;
  }
  return outcome;
}

}  // namespace Vse
