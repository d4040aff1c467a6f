// The case that the program works on: one patient's hip, measured, and what the model makes of it.
#pragma once

#include <QString>
#include <optional>

#include "case/case_entries.h"
#include "model/hip_model.h"
#include "model/vocabulary.h"

// The patient as entered. An empty text is not known; which placeholder to show for it is up to the
// reader of the record.
struct Patient {
  QString name;  // surname, one blank, first name
  std::optional<Sex> sex;
  QString dateOfBirth;  // as typed
  QString bodyWeight;   // as typed, kg
  std::optional<HipSide> hip;
  QString comments;  // as typed; lines end with LF
  bool operator==(const Patient&) const = default;
};

// All that is entered: what the results follow from.
struct CaseData {
  Patient patient;
  Sila::HipInputs inputs;

  bool weightUnknown() const { return !inputs.bodyWeight.has_value(); }
  bool operator==(const CaseData&) const = default;
};

// Whose stresses a record holds. A case that the model refuses has none of its own.
enum class Stresses { None, OfCaseBefore, Own };

// Changes as a whole: a confirmation replaces `data`, RunModel the rest.
struct CaseRecord {
  CaseData data;
  Stresses stresses = Stresses::None;
  Sila::HipState model;  // results and working values of the last run

  const Sila::HipResults& results() const { return model.results; }
};

namespace Vse {

// The resultant hip force in kN, with the body weight that was computed with.
double HipForceKilonewtons(const CaseRecord& record);

// The whole model on the record's inputs: resultant force, its range check, contact stress. `rWb`
// and `thetaR` are written in every case, the stresses only when the outcome is Ok; `stresses` says
// so.
Sila::HipOutcome RunModel(CaseRecord& record);

}  // namespace Vse
