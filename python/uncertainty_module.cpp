// Plain tuples out; the Python file beside it names what is in them.
#include "python/uncertainty_module.h"

#include <pybind11/stl.h>

#include <optional>
#include <utility>
#include <vector>

#include "python/given_hips.h"
#include "uncertainty/hip_uncertainty.h"

namespace py = pybind11;

namespace Python {

namespace {

using Uncertainty::Distribution;
using Uncertainty::HipReading;
using Uncertainty::HipUncertainty;
using Uncertainty::Points;
using Uncertainty::Settings;

// Values and their u in a cohort's first units, by Sila::Measurement.
using Values = std::array<std::optional<double>, Sila::kMeasurementCount>;
using Errors = std::array<double, Sila::kMeasurementCount>;
using Distributions = std::array<Distribution, Uncertainty::kReadingSources>;
using Magnification = std::optional<std::pair<double, double>>;  // and its u

std::optional<Cohort::NumberFault> FirstFault(const Values& values) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::optional<double>& value = values[Sila::IndexOf(row.id)];
    const Sila::Unit unit = Sila::UnitsOf(row.kind()).front();
    if (!value) continue;
    if (const auto fault = Cohort::FaultOf(row.kind(), unit, *value)) return fault;
  }
  return std::nullopt;
}

HipReading ReadingOf(const Values& values, const Errors& errors, const Magnification& magnification,
                     const Distributions& distributions) {
  HipReading reading;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::size_t i = Sila::IndexOf(row.id);
    const auto held = [&](double given) {
      return Sila::ToHeld(row.kind(), Sila::UnitsOf(row.kind()).front(), given);
    };
    if (values[i]) {
      Sila::SetValue(reading.values, row, held(*values[i]));
    } else if (row.later) {
      Sila::SetValue(reading.values, row, row.later->without);
    }
    reading.errors[i] = {held(errors[i]), distributions[i]};
  }
  if (magnification) {
    reading.magnification = Uncertainty::Source{magnification->first, magnification->second,
                                                distributions[Uncertainty::kMagnification]};
  }
  return reading;
}

py::object ResultOf(const std::optional<Uncertainty::HipResultUncertainty>& result) {
  if (!result) return py::none();
  std::optional<std::pair<double, double>> ends;
  if (result->spread.interval) {
    ends = {result->spread.interval->low, result->spread.interval->high};
  }
  return py::make_tuple(result->estimate, result->spread.u, ends, result->spread.budget);
}

py::tuple TupleOf(const HipUncertainty& hip) {
  py::tuple results(hip.results.size());
  for (std::size_t i = 0; i < hip.results.size(); ++i) results[i] = ResultOf(hip.results[i]);
  return py::make_tuple(hip.trials, hip.ok, hip.settled, results);
}

// The status, and the rest where that is Ok.
py::tuple ComputeUncertainty(const Values& values, const Errors& errors,
                             const Magnification& magnification, const Distributions& distributions,
                             const Points& points, const Settings& settings) {
  if (const auto fault = FirstFault(values)) {
    return py::make_tuple(static_cast<int>(StatusOf(*fault)), py::none());
  }
  const HipReading reading = ReadingOf(values, errors, magnification, distributions);
  HipUncertainty hip;
  {
    const py::gil_scoped_release released;
    hip = ComputeHipUncertainty(reading, points, settings);
  }
  const HipStatus status = StatusOf(hip.outcome);
  if (status != HipStatus::Ok) return py::make_tuple(static_cast<int>(status), py::none());
  return py::make_tuple(static_cast<int>(status), TupleOf(hip));
}

}  // namespace

void AddUncertainty(py::module_& module) {
  module.attr("MAX_TRIALS") = Uncertainty::kMaxTrials;
  py::enum_<Distribution>(module, "Distribution", py::module_local())
      .value("normal", Distribution::Normal)
      .value("uniform", Distribution::Uniform)
      .value("triangular", Distribution::Triangular);
  py::class_<Points>(module, "Points", py::module_local())
      .def(py::init([](std::uint64_t seed) {
             const py::gil_scoped_release released;
             return std::make_unique<Points>(Uncertainty::kReadingSources, seed);
           }),
           py::arg("seed"));
  py::class_<Settings>(module, "Settings", py::module_local())
      .def(py::init([](double coverage, std::size_t trials, bool automatic, bool budget) {
             return Settings{coverage, trials, automatic, budget};
           }),
           py::arg("coverage"), py::arg("trials"), py::arg("automatic"), py::arg("budget"));
  module.def("compute_uncertainty", &ComputeUncertainty, py::arg("values"), py::arg("errors"),
             py::arg("magnification"), py::arg("distributions"), py::arg("points"),
             py::arg("settings"));
}

}  // namespace Python
