// The case record's texts, its way back to the form, and the run of the model over it.
#include "case/case_record.h"

#include "case/number_text.h"

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

std::optional<NameParts> SplitName(const QString& name) {
  const qsizetype blank = name.lastIndexOf(u' ');
  if (blank < 0) return std::nullopt;
  return NameParts{name.left(blank + 1), name.mid(blank + 1)};
}

namespace {

double Geometry::*Member(Measure measure) {
  constexpr std::array<double Geometry::*, kMeasureCount> kMembers = {
      &Geometry::lizm, &Geometry::xizm,  &Geometry::zizm,    &Geometry::Cizm,
      &Geometry::Hizm, &Geometry::zasuk, &Geometry::thetaCE, &Geometry::headRadius};
  return kMembers[static_cast<std::size_t>(measure)];
}

QString UnlessUnknown(const QString& text) {
  return text == kUnknown ? QString() : text;
}

}  // namespace

double ValueOf(const Geometry& geometry, Measure measure) {
  return geometry.*Member(measure);
}

void SetValue(Geometry& geometry, Measure measure, double value) {
  geometry.*Member(measure) = value;
}

CaseEntries EntriesOf(const CaseRecord& record, const QLocale& locale, const CaseEntries& current) {
  CaseEntries entries = current;
  const PatientTexts& patient = record.patient;
  if (const std::optional<NameParts> name = SplitName(patient.name)) {
    entries.surname = name->surname;
    entries.firstName = name->firstName;
  }
  entries.sex = patient.sex == u"M" ? CaseEntries::Sex::Male : CaseEntries::Sex::Female;
  entries.hip = patient.hip == u"L" ? CaseEntries::Hip::Left : CaseEntries::Hip::Right;
  entries.dateOfBirth = UnlessUnknown(patient.dateOfBirth);
  entries.bodyWeight = UnlessUnknown(patient.bodyWeight);
  entries.comments = patient.comments == kNoComments ? QString() : patient.comments;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const auto measure = static_cast<Measure>(i);
    const double held = ValueOf(record.geometry, measure);
    const bool angle = IsAngle(measure);
    const QStringView unit = angle                            ? kDegree
                             : measure == Measure::HeadRadius ? kMetre
                                                              : kCentimetre;
    entries.measures[i] = {NumberText(angle ? RadiansToDegrees(held) : held, locale),
                           unit.toString()};
  }
  return entries;
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
