// What is measured on the radiograph and what the model finds: one row each, in the order in which
// forms, files and tables show them. Whoever needs every measurement or every result loops over the
// rows.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "model/units.h"

namespace Sila {

// What the model takes. The frame is that of the radiograph, with its origin at the centre of the
// femoral head. No value is checked here: impossible ones end in a refusal, see ComputeHip.
struct HipInputs {
  Centimetres lizm = {};
  Centimetres xizm = {};  // positive downward
  Centimetres zizm = {};  // positive lateral
  Centimetres Cizm = {};
  Centimetres Hizm = {};
  Radians zasuk = {};
  Radians thetaCE = {};
  Metres headRadius = {};
  std::optional<Kilograms> bodyWeight = {};  // empty when it is not known

  bool operator==(const HipInputs&) const = default;
};

// What the model finds.
struct HipResults {
  double rWb = 0.0;            // resultant hip force over body weight, in the frontal plane
  Degrees thetaR = {};         // inclination of that force from the vertical
  Degrees thetaPol = {};       // stress pole, positive lateral of the vertical
  PerSquareMetre pmaxWb = {};  // peak contact stress over body weight
  Pascals pmax = {};           // peak contact stress; of no meaning while the weight is not known
};

// The body weight that is computed with when it is not known.
inline constexpr Kilograms kAssumedBodyWeight{60.0};

enum class Measurement : std::size_t {
  Lizm,
  Xizm,
  Zizm,
  Cizm,
  Hizm,
  Zasuk,
  ThetaCE,
  HeadRadius,
  BodyWeight
};

// The kind says in which units a measurement may be given and in which one it is held. In the order
// of the types that a row's member can have.
enum class Kind { Length, Angle, Radius, Weight };

// Of a measurement that older case files, kept work and cohorts do not have.
struct LaterMeasurement {
  std::string_view since;  // version of the program
  double without;          // the value of an older case, in the held unit
};

struct MeasurementRow {
  using Member = std::variant<Centimetres HipInputs::*, Radians HipInputs::*, Metres HipInputs::*,
                              std::optional<Kilograms> HipInputs::*>;
  Measurement id;
  std::string_view key;      // in case files and cohorts
  std::string_view meaning;  // for a person
  Member member;
  std::optional<LaterMeasurement> later = {};  // empty: there since version 1.0, and required

  constexpr Kind kind() const { return static_cast<Kind>(member.index()); }
};

inline constexpr std::array kMeasurements = {
    MeasurementRow{Measurement::Lizm, "lizm", "half of the distance between the two head centres",
                   &HipInputs::lizm},
    MeasurementRow{Measurement::Xizm, "xizm",
                   "vertical coordinate of the trochanter point, seen from the head centre",
                   &HipInputs::xizm},
    MeasurementRow{Measurement::Zizm, "zizm",
                   "horizontal coordinate of the trochanter point, seen from the head centre",
                   &HipInputs::zizm},
    MeasurementRow{
        Measurement::Cizm, "Cizm",
        "horizontal distance from the head centre to the most lateral point of the iliac "
        "crest",
        &HipInputs::Cizm},
    MeasurementRow{Measurement::Hizm, "Hizm",
                   "vertical distance from the head centre to the top of the iliac crest",
                   &HipInputs::Hizm},
    MeasurementRow{Measurement::Zasuk, "zasuk",
                   "rotation of the trochanter point about the head centre", &HipInputs::zasuk},
    MeasurementRow{Measurement::ThetaCE, "thetaCE", "centre-edge angle", &HipInputs::thetaCE},
    MeasurementRow{Measurement::HeadRadius, "headRadius", "radius of the femoral head",
                   &HipInputs::headRadius},
    MeasurementRow{Measurement::BodyWeight, "bodyWeight", "body weight", &HipInputs::bodyWeight}};
inline constexpr std::size_t kMeasurementCount = kMeasurements.size();

// Without the body weight, which is not taken from the picture and may be unknown. It comes last.
inline constexpr std::size_t kRadiographCount = kMeasurementCount - 1;
inline constexpr std::span<const MeasurementRow> kRadiographMeasurements(kMeasurements.data(),
                                                                         kRadiographCount);

constexpr std::size_t IndexOf(Measurement id) {
  return static_cast<std::size_t>(id);
}
constexpr const MeasurementRow& RowOf(Measurement id) {
  return kMeasurements[IndexOf(id)];
}

// The measurement as a plain number in its held unit; a body weight that is not known gives the
// assumed one.
double ValueOf(const HipInputs& inputs, const MeasurementRow& row);
void SetValue(HipInputs& inputs, const MeasurementRow& row, double held);

enum class Unit { Millimetre, Centimetre, Metre, Degree, Radian, Kilogram };

// The units in which a measurement of this kind may be given. The first is that of case files and
// of cohorts whose header names none.
std::span<const Unit> UnitsOf(Kind kind);

// A number in one of the kind's units, in the held unit: lengths in cm, radii in m, angles in
// radians, weights in kg; and back.
double ToHeld(Kind kind, Unit unit, double given);
double FromHeld(Kind kind, Unit unit, double held);

double DegreesToRadians(double degrees);
double RadiansToDegrees(double radians);

// The largest number that may be given, in size: far beyond any measurement, and far enough below
// the largest double that degrees become radians and fifteen digits round up without leaving its
// range.
inline constexpr double kLargestNumber = 1e300;

// The largest angle that may be given in radians: a full turn.
inline constexpr double kLargestRadians = 6.28318530717958;

enum class Result : std::size_t { RWb, ThetaR, ThetaPol, PmaxWb, Pmax };

struct ResultRow {
  Result id;
  std::string_view key;      // in cohorts
  std::string_view caption;  // for a person
  std::string_view unit;     // empty for a ratio
  std::string_view meaning;
  bool isStress;     // there is none when the model refuses the hip
  bool needsWeight;  // hidden while the body weight is not known
  double (*value)(const HipResults& results);
};

inline constexpr std::array kResults = {
    ResultRow{Result::RWb, "rWb", "R/Wb", "", "resultant force over body weight", false, false,
              [](const HipResults& r) { return r.rWb; }},
    ResultRow{Result::ThetaR, "thetaR", "Theta-R", "°", "inclination of the resultant force", false,
              false, [](const HipResults& r) { return r.thetaR.value; }},
    ResultRow{Result::ThetaPol, "thetaPol", "Theta-pol", "°", "position of the stress pole", true,
              false, [](const HipResults& r) { return r.thetaPol.value; }},
    ResultRow{Result::PmaxWb, "pmaxWb", "Pmax/Wb", "m^-2", "peak stress over body weight", true,
              false, [](const HipResults& r) { return r.pmaxWb.value; }},
    ResultRow{Result::Pmax, "pmax", "Pmax", "Pa", "peak stress", true, true,
              [](const HipResults& r) { return r.pmax.value; }}};
inline constexpr std::size_t kResultCount = kResults.size();

constexpr std::size_t IndexOf(Result id) {
  return static_cast<std::size_t>(id);
}
constexpr const ResultRow& RowOf(Result id) {
  return kResults[IndexOf(id)];
}

// A row out of its place would be found under another's name.
template <class Rows>
constexpr bool StandAtTheirIds(const Rows& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (IndexOf(rows[i].id) != i) return false;
  }
  return true;
}
static_assert(StandAtTheirIds(kMeasurements) && StandAtTheirIds(kResults));
static_assert(kMeasurements.back().kind() == Kind::Weight);

}  // namespace Sila
