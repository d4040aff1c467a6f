// From NumPy's arrays to columns of plain numbers.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <optional>
#include <vector>

#include "python/given_hips.h"

namespace Python {

// Holds float64 and has one dimension.
using Numbers = pybind11::array_t<double, 0>;

// Valid as long as the array.
GivenColumn ColumnOf(const Numbers& array, Sila::Unit unit);

// By Sila::Measurement.
GivenHips ReadColumns(const std::vector<std::optional<Numbers>>& arrays, const Units& units,
                      std::size_t count);

// A new array, added to a tuple; gives its first element.
template <class Element>
Element* AddArray(pybind11::tuple& tuple, std::size_t place, std::size_t count) {
  pybind11::array_t<Element> array(static_cast<pybind11::ssize_t>(count));
  Element* const first = array.mutable_data();
  tuple[place] = std::move(array);
  return first;
}

// False when Ctrl+C was pressed; the exception is then set. Takes the GIL.
bool NoSignal();

}  // namespace Python
