// How far the measurements and results of a hip can be trusted, given the errors of the marks they
// come from. A mark moves every measurement that uses it: a head's centre that is misread moves
// five of them together, which errors of the measurements, each of its own, would not do.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/measure.h"
#include "landmarks/picture_scale.h"
#include "model/vocabulary.h"
#include "uncertainty/hip_uncertainty.h"
#include "uncertainty/propagate.h"

namespace Measuring {

// Errors of marks in mm on the picture. A point errs in every direction alike and independently of
// other points.
struct MarkErrors {
  Landmarks::CircleCovariance head = {};
  Landmarks::CircleCovariance other = {};  // where the other head is marked
  double midline = 0.0;                    // standard uncertainty of each of its points
  double socketEdge = 0.0;
  double crestTop = 0.0;
  double crestLateral = 0.0;
  double trochanter = 0.0;
};

// Of a circle through points that were marked with the standard uncertainty `markU`; where they
// scatter more than that about the outline, their scatter counts.
Landmarks::CircleCovariance ErrorOfCircle(const Landmarks::CircleFit& fit, double markU);

// In the order of kMeasurementMarks, in true mm and rad; not a number where it cannot be taken.
using Numbers = std::array<double, Landmarks::kMeasurementMarks.size()>;
Numbers NumbersOf(const Landmarks::Measurements& measurements);

// The vocabulary's row for a measurement, by kMeasurementMarks, and its number in the held unit.
const Sila::MeasurementRow& RowOfMeasured(std::size_t measured);
double HeldOf(std::size_t measured, double number);

struct MarkedHip {
  Landmarks::Marks marks;
  MarkErrors errors;
  Landmarks::Magnification magnification;  // one factor, and one error, for all lengths
  // What is not measured: the rotation, the body weight, and whatever lacks its marks. True values
  // with errors of their own; its magnification is not used.
  Uncertainty::HipReading rest;
};

// Sources in their fixed order: the errors of the marks as independent normal numbers (value 0),
// three for each circle and two for each point; the magnification; the measurements of the rest.
// What is not there has no error.
inline constexpr std::size_t kCircleErrors = 3;
inline constexpr std::size_t kPointErrors = 2;
enum FirstSource : std::size_t {
  kHeadSource = 0,
  kOtherSource = kHeadSource + kCircleErrors,
  kSocketEdgeSource = kOtherSource + 2 * kPointErrors,  // room for two points on the midline
  kCrestTopSource = kSocketEdgeSource + kPointErrors,
  kCrestLateralSource = kCrestTopSource + kPointErrors,
  kTrochanterSource = kCrestLateralSource + kPointErrors,
  kMagnificationSource = kTrochanterSource + kPointErrors,
  kRestSource = kMagnificationSource + 1,
  kMarkedHipSources = kRestSource + Sila::kMeasurementCount
};
// A budget has a part for each mark, one for the magnification and one for the rest: the
// coordinates of one mark are not read one by one.
inline constexpr std::array<std::size_t, 9> kBudgetParts = {
    kHeadSource,          kOtherSource,        kSocketEdgeSource,
    kCrestTopSource,      kCrestLateralSource, kTrochanterSource,
    kMagnificationSource, kRestSource,         kMarkedHipSources};
std::vector<Uncertainty::Source> SourcesOf(const MarkedHip& hip);

// One column a measurement, in the order of kMeasurementMarks, in true mm and rad. Those that
// cannot be taken from the marks are 0; a trial in which one of the others cannot is refused.
Uncertainty::BlockModel MeasurementModel(const MarkedHip& hip);

// By kMeasurementMarks; empty for what cannot be taken from the marks. The points need
// kMarkedHipSources dimensions.
using MeasurementSpreads =
    std::array<std::optional<Uncertainty::Spread>, Landmarks::kMeasurementMarks.size()>;
MeasurementSpreads ComputeMeasurementUncertainty(const MarkedHip& hip,
                                                 const Uncertainty::Points& points,
                                                 const Uncertainty::Settings& settings);

// In held units: what is measured, and the rest.
Sila::HipInputs InputsOf(const MarkedHip& hip);

// Every trial moves the marks and takes the measurements anew. The estimates are the model's for
// `inputs`: those of InputsOf, or what they are rounded to where the user sees them.
Uncertainty::HipUncertainty ComputeHipUncertainty(const MarkedHip& hip,
                                                  const Sila::HipInputs& inputs,
                                                  const Uncertainty::Points& points,
                                                  const Uncertainty::Settings& settings);

}  // namespace Measuring
