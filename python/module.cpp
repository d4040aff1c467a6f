// The module telmarion._core: what the Python files beside it call. They check and convert what a
// caller gives; here every array holds float64 and has one dimension.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "columns/cohort_error.h"
#include "columns/header.h"
#include "python/arrays.h"
#include "python/given_hips.h"
#include "python/uncertainty_module.h"

namespace py = pybind11;

namespace {

using Python::ComputedHips;
using Python::GivenColumn;
using Python::GivenHips;
using Python::Units;

template <class Rows>
py::tuple KeysOf(const Rows& rows) {
  py::tuple keys(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) keys[i] = py::str(std::string(rows[i].key));
  return keys;
}

// A float or an int, and nothing else that Python would turn into a float.
std::optional<double> PlainNumber(py::handle object) {
  if (PyFloat_Check(object.ptr())) return PyFloat_AS_DOUBLE(object.ptr());
  if (!PyLong_CheckExact(object.ptr())) return std::nullopt;
  const double number = PyLong_AsDouble(object.ptr());
  if (number != -1.0 || PyErr_Occurred() == nullptr) return number;
  PyErr_Clear();
  return std::nullopt;
}

// One hip of plain numbers; None where a measurement is not known.
struct PlainHip {
  std::array<double, Sila::kMeasurementCount> numbers = {};
  GivenHips hips = {.count = 1};
};

// False when something in `values` is neither a plain number nor None.
bool ReadPlainHip(const py::tuple& values, const Units& units, PlainHip& hip) {
  for (std::size_t i = 0; i < hip.numbers.size(); ++i) {
    const py::handle value = PyTuple_GET_ITEM(values.ptr(), static_cast<py::ssize_t>(i));
    if (value.is_none() && Python::MayBeMissing(Sila::kMeasurements[i])) continue;
    const std::optional<double> number = PlainNumber(value);
    if (!number) return false;
    hip.numbers[i] = *number;
    hip.hips.columns[i] =
        GivenColumn{.first = reinterpret_cast<const std::byte*>(&hip.numbers[i]), .unit = units[i]};
  }
  return true;
}

py::object ComputePlainHip(const py::tuple& values) {
  PlainHip hip;
  if (!ReadPlainHip(values, Python::FirstUnits(), hip)) return py::none();
  std::array<double, Sila::kResultCount> results{};
  std::uint8_t status = 0;
  ComputedHips computed{.status = &status};
  for (std::size_t i = 0; i < results.size(); ++i) computed.results[i] = &results[i];
  Python::ComputeHips(hip.hips, computed, 1, [] { return true; });
  py::tuple out(results.size() + 1);
  for (std::size_t i = 0; i < results.size(); ++i) out[i] = py::float_(results[i]);
  out[results.size()] = py::int_(status);
  return out;
}

py::tuple ComputeColumns(const std::vector<std::optional<Python::Numbers>>& arrays,
                         const std::optional<Units>& units, std::size_t count, unsigned threads) {
  const GivenHips hips = Python::ReadColumns(arrays, units.value_or(Python::FirstUnits()), count);
  py::tuple out(Sila::kResultCount + 1);
  ComputedHips computed;
  for (std::size_t i = 0; i < Sila::kResultCount; ++i) {
    computed.results[i] = Python::AddArray<double>(out, i, count);
  }
  computed.status = Python::AddArray<std::uint8_t>(out, Sila::kResultCount, count);
  bool complete = false;
  {
    const py::gil_scoped_release released;
    complete = Python::ComputeHips(hips, computed, threads, Python::NoSignal);
  }
  if (!complete) throw py::error_already_set();
  return out;
}

std::string FaultsOfRow(const std::vector<std::optional<Python::Numbers>>& arrays,
                        const Units& units, std::size_t row) {
  return Python::FaultsOf(Python::ReadColumns(arrays, units, row + 1), row);
}

// Where the uncertainty of each measurement is and in which units, where the magnification and its
// uncertainty are, and the names of what is added; None without any such column, unless there are
// defaults.
py::object FindUncertainties(const Cohort::Columns& columns, double coverage, bool defaults) {
  const Cohort::UncertaintyColumns& found = columns.uncertainty;
  if (!found.Any() && !defaults) return py::none();
  const std::vector<std::string> added = Cohort::AddedUncertaintyNames(coverage);
  Cohort::CheckAreNotAdded(columns, added);
  std::array<std::optional<std::size_t>, Sila::kMeasurementCount> fields;
  std::array<std::optional<Sila::Unit>, Sila::kMeasurementCount> units;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!found.u[i]) continue;
    fields[i] = found.u[i]->field;
    units[i] = found.u[i]->unit;
  }
  return py::make_tuple(fields, units, found.magnification, found.magnificationU, added);
}

// Where each measurement is, None where it has no column; in which units; the same for the
// uncertainties; and remarks.
py::tuple FindColumns(std::vector<std::string> names, double coverage, bool defaults) {
  const Cohort::Columns columns = Cohort::FindColumns(std::move(names));
  const std::string missing = Cohort::MissingColumns(columns);
  if (!missing.empty()) throw Cohort::CohortError(missing);
  std::array<std::optional<std::size_t>, Sila::kMeasurementCount> fields;
  Units units{};
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!columns.inputs[i]) continue;
    fields[i] = columns.inputs[i]->field;
    units[i] = columns.inputs[i]->unit;
  }
  return py::make_tuple(fields, units, FindUncertainties(columns, coverage, defaults),
                        columns.remarks);
}

py::tuple StatusTexts() {
  py::tuple texts(Python::kStatusCount);
  for (std::size_t i = 0; i < Python::kStatusCount; ++i) {
    texts[i] = py::str(Python::TextOf(static_cast<Python::HipStatus>(i)));
  }
  return texts;
}

}  // namespace

PYBIND11_MODULE(_core, module) {
  module.doc() = "The model in C++; use what the package telmarion gives.";
  module.attr("__version__") = TELMARION_VERSION;
  module.attr("MEASUREMENTS") = KeysOf(Sila::kMeasurements);
  module.attr("RESULTS") = KeysOf(Sila::kResults);
  module.attr("STATUS_COLUMN") = py::str(std::string(Cohort::kStatusName));
  module.attr("STATUS_TEXTS") = StatusTexts();
  py::register_local_exception<Cohort::CohortError>(module, "HeaderError", PyExc_ValueError);
  py::enum_<Sila::Unit>(module, "Unit", py::module_local())
      .value("MILLIMETRE", Sila::Unit::Millimetre)
      .value("CENTIMETRE", Sila::Unit::Centimetre)
      .value("METRE", Sila::Unit::Metre)
      .value("DEGREE", Sila::Unit::Degree)
      .value("RADIAN", Sila::Unit::Radian)
      .value("KILOGRAM", Sila::Unit::Kilogram);
  module.def("compute_hip", &ComputePlainHip, py::arg("values"));
  module.def("compute_columns", &ComputeColumns, py::arg("arrays"), py::arg("units"),
             py::arg("count"), py::arg("threads"));
  module.def("faults_of_row", &FaultsOfRow, py::arg("arrays"), py::arg("units"), py::arg("row"));
  module.def("find_columns", &FindColumns, py::arg("names"), py::arg("coverage"),
             py::arg("defaults"));
  Python::AddUncertainty(module);
}
