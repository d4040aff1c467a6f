// Trials: errors of marks to moved marks, to measurements, to the model's inputs.
#include "measuring/mark_uncertainty.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

namespace Measuring {

namespace {

using Landmarks::Circle;
using Landmarks::CircleCovariance;
using Landmarks::Marks;
using Landmarks::Measurements;
using Landmarks::Midline;
using Landmarks::Point;
using Uncertainty::Column;

constexpr std::size_t kMeasured = Landmarks::kMeasurementMarks.size();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

constexpr const Sila::MeasurementRow& RowOf(std::size_t measured) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (row.key == Landmarks::kMeasurementMarks[measured].key) return row;
  }
  return Sila::kMeasurements.back();
}
static_assert(RowOf(0).id == Sila::Measurement::Lizm);
static_assert(RowOf(1).id == Sila::Measurement::Xizm);
static_assert(RowOf(2).id == Sila::Measurement::Zizm);
static_assert(RowOf(3).id == Sila::Measurement::Cizm);
static_assert(RowOf(4).id == Sila::Measurement::Hizm);
static_assert(RowOf(5).id == Sila::Measurement::ThetaCE);
static_assert(RowOf(6).id == Sila::Measurement::HeadRadius);

// The lower triangle whose product with its transpose is the covariance, so that it turns
// independent errors into those of the circle. A direction without error gives a row of zeros.
CircleCovariance Root(const CircleCovariance& covariance) {
  CircleCovariance root{};
  for (std::size_t i = 0; i < root.size(); ++i) {
    for (std::size_t k = 0; k <= i; ++k) {
      double rest = covariance[i][k];
      for (std::size_t j = 0; j < k; ++j) rest -= root[i][j] * root[k][j];
      if (i == k) {
        root[i][i] = std::sqrt(std::max(rest, 0.0));
      } else if (root[k][k] > 0.0) {
        root[i][k] = rest / root[k][k];
      }
    }
  }
  return root;
}

// What does not change from trial to trial.
struct Trials {
  Marks marks;
  MarkErrors errors;
  CircleCovariance headRoot;
  CircleCovariance otherRoot;
};

Trials TrialsOf(const MarkedHip& hip) {
  return {hip.marks, hip.errors, Root(hip.errors.head), Root(hip.errors.other)};
}

// The errors of one trial, row `trial` of the sources.
struct Errors {
  std::span<const Column> sources;
  std::size_t trial;
  double operator[](std::size_t source) const { return sources[source].at[trial]; }
};

Circle Moved(const Circle& circle, const CircleCovariance& root, const Errors& errors,
             std::size_t first) {
  std::array<double, kCircleErrors> by{};
  for (std::size_t i = 0; i < by.size(); ++i) {
    for (std::size_t k = 0; k <= i; ++k) by[i] += root[i][k] * errors[first + k];
  }
  return {circle.centre + Point{by[0], by[1]}, circle.radius + by[2]};
}

Point Moved(Point point, double u, const Errors& errors, std::size_t first) {
  return point + u * Point{errors[first], errors[first + 1]};
}

Marks Moved(const Trials& trials, const Errors& errors) {
  Marks marks = trials.marks;
  const MarkErrors& u = trials.errors;
  if (marks.head) marks.head = Moved(*marks.head, trials.headRoot, errors, kHeadSource);
  if (auto* other = std::get_if<Circle>(&marks.other)) {
    *other = Moved(*other, trials.otherRoot, errors, kOtherSource);
  }
  if (auto* midline = std::get_if<Midline>(&marks.other)) {
    (*midline)[0] = Moved((*midline)[0], u.midline, errors, kOtherSource);
    (*midline)[1] = Moved((*midline)[1], u.midline, errors, kOtherSource + kPointErrors);
  }
  const auto move = [&](std::optional<Point>& mark, double by, std::size_t first) {
    if (mark) mark = Moved(*mark, by, errors, first);
  };
  move(marks.socketEdge, u.socketEdge, kSocketEdgeSource);
  move(marks.crestTop, u.crestTop, kCrestTopSource);
  move(marks.crestLateral, u.crestLateral, kCrestLateralSource);
  move(marks.trochanter, u.trochanter, kTrochanterSource);
  return marks;
}

// A magnification that is not above 0 measures nothing.
Numbers Remeasured(const Trials& trials, const Errors& errors) {
  const double factor = errors[kMagnificationSource];
  if (!(factor > 0.0)) {
    Numbers none{};
    none.fill(kNan);
    return none;
  }
  return NumbersOf(Measure(Moved(trials, errors), {factor, 0.0}));
}

std::array<bool, kMeasured> IsMeasured(const MarkedHip& hip) {
  const Numbers numbers = NumbersOf(Measure(hip.marks, hip.magnification));
  std::array<bool, kMeasured> is{};
  for (std::size_t i = 0; i < kMeasured; ++i) is[i] = !std::isnan(numbers[i]);
  return is;
}

// A measurement that is taken in every trial.
struct Taken {
  std::size_t measured = 0;
  std::size_t input = 0;  // its index among the model's inputs
  double held = 0.0;      // one of its units in held units
};

std::vector<Taken> TakenOf(const MarkedHip& hip) {
  const std::array<bool, kMeasured> measured = IsMeasured(hip);
  std::vector<Taken> taken;
  for (std::size_t i = 0; i < kMeasured; ++i) {
    if (measured[i]) taken.push_back({i, IndexOf(RowOf(i).id), HeldOf(i, 1.0)});
  }
  return taken;
}

}  // namespace

Numbers NumbersOf(const Measurements& m) {
  const auto value = [](const auto& measured) { return measured ? measured->value : kNan; };
  return {value(m.halfInterhip), value(m.trochanterX), value(m.trochanterZ), value(m.crestWidth),
          value(m.crestHeight),  value(m.centreEdge),  value(m.headRadius)};
}

const Sila::MeasurementRow& RowOfMeasured(std::size_t measured) {
  return RowOf(measured);
}

double HeldOf(std::size_t measured, double number) {
  const Sila::Kind kind = RowOf(measured).kind();
  const Sila::Unit unit = kind == Sila::Kind::Angle ? Sila::Unit::Radian : Sila::Unit::Millimetre;
  return Sila::ToHeld(kind, unit, number);
}

CircleCovariance ErrorOfCircle(const Landmarks::CircleFit& fit, double markU) {
  const double u = std::max(markU, fit.residual);
  CircleCovariance covariance = fit.perMark;
  for (auto& row : covariance) {
    for (double& entry : row) entry *= u * u;
  }
  return covariance;
}

std::vector<Uncertainty::Source> SourcesOf(const MarkedHip& hip) {
  std::vector<Uncertainty::Source> sources(kMagnificationSource);
  const auto err = [&](std::size_t first, std::size_t end, bool isMarked) {
    for (std::size_t i = first; i < end; ++i) sources[i].u = isMarked ? 1.0 : 0.0;
  };
  const Marks& marks = hip.marks;
  err(kHeadSource, kOtherSource, marks.head.has_value());
  err(kOtherSource, kSocketEdgeSource, !std::holds_alternative<std::monostate>(marks.other));
  err(kSocketEdgeSource, kCrestTopSource, marks.socketEdge.has_value());
  err(kCrestTopSource, kCrestLateralSource, marks.crestTop.has_value());
  err(kCrestLateralSource, kTrochanterSource, marks.crestLateral.has_value());
  err(kTrochanterSource, kMagnificationSource, marks.trochanter.has_value());
  sources.push_back({hip.magnification.factor, hip.magnification.u});
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const Uncertainty::ReadingError& error = hip.rest.errors[IndexOf(row.id)];
    sources.push_back({ValueOf(hip.rest.values, row), error.u, error.distribution});
  }
  if (!hip.rest.values.bodyWeight) sources.back().u = 0.0;
  const std::array<bool, kMeasured> measured = IsMeasured(hip);
  for (std::size_t i = 0; i < kMeasured; ++i) {
    if (measured[i]) sources[kRestSource + IndexOf(RowOf(i).id)].u = 0.0;
  }
  return sources;
}

Uncertainty::BlockModel MeasurementModel(const MarkedHip& hip) {
  return [trials = TrialsOf(hip), measured = IsMeasured(hip)](
             std::span<const Column> sources, std::size_t count, std::span<Column> results) {
    for (std::size_t k = 0; k < count; ++k) {
      const Numbers numbers = Remeasured(trials, {sources, k});
      bool isRefused = false;
      for (std::size_t i = 0; i < kMeasured; ++i) {
        isRefused = isRefused || (measured[i] && std::isnan(numbers[i]));
      }
      for (std::size_t i = 0; i < kMeasured; ++i) {
        results[i].at[k] = isRefused ? Uncertainty::kRefused : measured[i] ? numbers[i] : 0.0;
      }
    }
  };
}

MeasurementSpreads ComputeMeasurementUncertainty(const MarkedHip& hip,
                                                 const Uncertainty::Points& points,
                                                 const Uncertainty::Settings& settings) {
  const std::vector<Uncertainty::Source> sources = SourcesOf(hip);
  const Uncertainty::Propagated propagated =
      Propagate(sources, MeasurementModel(hip), kMeasured, points, settings);
  const std::array<bool, kMeasured> measured = IsMeasured(hip);
  MeasurementSpreads spreads;
  for (std::size_t i = 0; i < kMeasured; ++i) {
    if (measured[i]) spreads[i] = propagated.results[i];
  }
  return spreads;
}

Sila::HipInputs InputsOf(const MarkedHip& hip) {
  Sila::HipInputs inputs = hip.rest.values;
  const Numbers numbers = NumbersOf(Measure(hip.marks, hip.magnification));
  for (std::size_t i = 0; i < kMeasured; ++i) {
    if (!std::isnan(numbers[i])) SetValue(inputs, RowOf(i), HeldOf(i, numbers[i]));
  }
  return inputs;
}

Uncertainty::HipUncertainty ComputeHipUncertainty(const MarkedHip& hip,
                                                  const Sila::HipInputs& inputs,
                                                  const Uncertainty::Points& points,
                                                  const Uncertainty::Settings& settings) {
  const auto map = [trials = TrialsOf(hip), taken = TakenOf(hip)](std::span<const Column> sources,
                                                                  std::size_t count,
                                                                  Uncertainty::HipTrials& out) {
    for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) {
      out.columns[i] = &sources[kRestSource + i];
    }
    for (const Taken& one : taken) out.columns[one.input] = &out.computed[one.input];
    for (std::size_t k = 0; k < count; ++k) {
      const Numbers numbers = Remeasured(trials, {sources, k});
      for (const Taken& one : taken) {
        out.computed[one.input].at[k] = one.held * numbers[one.measured];
      }
    }
  };
  return Uncertainty::ComputeHipUncertainty(inputs, SourcesOf(hip), map, points, settings);
}

}  // namespace Measuring
