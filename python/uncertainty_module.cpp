// Plain tuples out; the Python file beside it names what is in them.
#include "python/uncertainty_module.h"

#include <pybind11/stl.h>

#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "columns/cohort_error.h"
#include "columns/default_reading.h"
#include "columns/visible_text.h"
#include "python/arrays.h"
#include "python/given_hips.h"
#include "python/uncertain_hips.h"
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

using OptionalNumbers = std::vector<std::optional<Numbers>>;
using OptionalUnits = std::array<std::optional<Sila::Unit>, Sila::kMeasurementCount>;

// The magnification's columns have no unit; that of a length does for them.
GivenUncertainties ReadUncertainties(const OptionalNumbers& arrays, const OptionalUnits& units,
                                     const std::array<std::optional<Numbers>, 2>& magnification) {
  constexpr Sila::Unit kAny = Sila::Unit::Centimetre;
  GivenUncertainties given;
  for (std::size_t i = 0; i < arrays.size(); ++i) {
    if (!arrays[i]) continue;
    given.u[i] = {ColumnOf(*arrays[i], units[i].value_or(kAny)), units[i].has_value()};
  }
  if (magnification[0]) given.magnification = ColumnOf(*magnification[0], kAny);
  if (magnification[1]) given.magnificationU = ColumnOf(*magnification[1], kAny);
  return given;
}

// Name, unit in words, u in that unit, distribution.
using GivenDefault = std::tuple<std::string, std::string, double, Distribution>;

DefaultErrors ReadDefaults(const std::vector<GivenDefault>& rows) {
  DefaultErrors defaults;
  std::set<std::optional<Sila::Measurement>> taken;
  for (const auto& [name, unit, u, distribution] : rows) {
    const Cohort::DefaultReading reading = Cohort::DefaultReadingNamed(name);
    if (!taken.insert(reading.measurement).second) {
      throw Cohort::CohortError(Cohort::Quoted(name) + " is there twice");
    }
    Uncertainty::ReadingError& error = reading.measurement
                                           ? defaults.errors[Sila::IndexOf(*reading.measurement)]
                                           : defaults.magnification;
    error = {Cohort::HeldDefault(reading, unit, u), distribution};
  }
  return defaults;
}

ComputedUncertainties AddRoom(py::tuple& out, std::size_t count, bool budget) {
  ComputedUncertainties computed;
  std::size_t place = 0;
  for (double*& results : computed.hips.results) results = AddArray<double>(out, place++, count);
  for (double*& spreads : computed.spreads) spreads = AddArray<double>(out, place++, count);
  computed.trials = AddArray<std::int64_t>(out, place++, count);
  computed.ok = AddArray<std::int64_t>(out, place++, count);
  computed.budget = AddArray<double>(out, place, budget ? count * kParts : 0);
  if (!budget) computed.budget = nullptr;
  return computed;
}

// Results, spreads, trials, those with an answer, the budgets one after the other, and the status
// in words.
py::tuple ComputeUncertainColumns(const OptionalNumbers& arrays, const Units& units,
                                  const OptionalNumbers& errors, const OptionalUnits& errorUnits,
                                  const std::array<std::optional<Numbers>, 2>& magnification,
                                  const DefaultErrors& defaults, std::size_t count,
                                  unsigned threads, const Points& points,
                                  const Settings& settings) {
  const GivenHips hips = ReadColumns(arrays, units, count);
  const GivenUncertainties given = ReadUncertainties(errors, errorUnits, magnification);
  py::tuple out((1 + kSpreadsPerResult) * Sila::kResultCount + 4);
  ComputedUncertainties computed = AddRoom(out, count, settings.budget);
  bool complete = false;
  {
    const py::gil_scoped_release released;
    const UncertaintyTask task{hips, given, defaults, points, settings};
    complete = ComputeUncertainHips(task, computed, threads, NoSignal);
  }
  if (!complete) throw py::error_already_set();
  out[out.size() - 1] = py::cast(computed.status);
  return out;
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
           py::arg("coverage"), py::arg("trials"), py::arg("automatic"), py::arg("budget"))
      .def_readonly("coverage", &Settings::coverage);
  py::class_<DefaultErrors>(module, "Defaults", py::module_local())
      .def(py::init(&ReadDefaults), py::arg("rows"));
  module.def("compute_uncertainty", &ComputeUncertainty, py::arg("values"), py::arg("errors"),
             py::arg("magnification"), py::arg("distributions"), py::arg("points"),
             py::arg("settings"));
  module.def("compute_uncertain_columns", &ComputeUncertainColumns, py::arg("arrays"),
             py::arg("units"), py::arg("errors"), py::arg("error_units"), py::arg("magnification"),
             py::arg("defaults"), py::arg("count"), py::arg("threads"), py::arg("points"),
             py::arg("settings"));
}

}  // namespace Python
