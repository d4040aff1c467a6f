// The case that the program works on: one patient's hip, measured, and what the model makes of it.
#pragma once

#include <QString>

#include "case/case_entries.h"
#include "model/hip_model.h"

// The patient as shown, saved and printed. What is missing stands as "Unknown", comments as "No".
struct PatientTexts {
  QString name;         // surname, one blank, first name
  QString sex;          // "M" or "F"
  QString dateOfBirth;  // as typed
  QString bodyWeight;   // as typed, kg
  QString hip;          // "L" is the left hip, "D" the right
  QString comments;     // as typed; lines end with LF
  bool operator==(const PatientTexts&) const = default;
};

// What was measured on the radiograph, in the units that the model and the case file use. What each
// length means stands at Sila::HipForceInputs.
struct Geometry {
  double lizm = 0.0;        // cm
  double xizm = 0.0;        // cm
  double zizm = 0.0;        // cm
  double Cizm = 0.0;        // cm
  double Hizm = 0.0;        // cm
  double zasuk = 0.0;       // rad
  double thetaCE = 0.0;     // rad
  double headRadius = 0.0;  // m
  bool operator==(const Geometry&) const = default;
};

// What the model found. Values keep their last computed state: after a refused case `rWb` and
// `thetaR` are new and the stresses are those of the case before.
struct Results {
  double rWb = 0.0;       // resultant hip force over body weight
  double thetaR = 0.0;    // degrees, its inclination
  double thetaPol = 0.0;  // degrees, stress pole
  double pmaxWb = 0.0;    // m^-2, peak stress over body weight
  double pmax = 0.0;      // Pa, peak stress; not to be shown, saved or printed while weightUnknown
};

// All that is entered: what the results follow from.
struct CaseData {
  PatientTexts patient;
  Geometry geometry;
  double bodyWeight = 0.0;  // kg, as computed with; kAssumedBodyWeight while weightUnknown
  bool weightUnknown = false;
  bool operator==(const CaseData&) const = default;
};

struct CaseRecord : CaseData {
  // Whose stresses `results` holds. A case that the model refuses has none of its own.
  enum class Stresses { None, OfCaseBefore, Own };

  Results results;
  Stresses stresses = Stresses::None;

  Sila::HipState model;  // working values of the last run
};

namespace Vse {

inline constexpr double kAssumedBodyWeight = 60.0;  // kg, when the body weight is not known

// What stands for missing patient data and for empty comments.
inline constexpr QStringView kUnknown = u"Unknown";
inline constexpr QStringView kNoComments = u"No";

// The record's geometry, one measure at a time, in held units.
double ValueOf(const Geometry& geometry, Measure measure);
void SetValue(Geometry& geometry, Measure measure, double value);

// The resultant hip force in kN, with the body weight that was computed with.
double HipForceKilonewtons(const CaseRecord& record);

// The whole model on the record's geometry and body weight: resultant force, its range check,
// contact stress. `rWb` and `thetaR` are written in every case, the stresses only when the outcome
// is Ok; `stresses` says so.
Sila::HipOutcome RunModel(CaseRecord& record);

}  // namespace Vse
