// Nothing is copied.
#include "python/arrays.h"

namespace Python {

GivenColumn ColumnOf(const Numbers& array, Sila::Unit unit) {
  return {.first = reinterpret_cast<const std::byte*>(array.data()),
          .stride = array.strides(0),
          .unit = unit};
}

GivenHips ReadColumns(const std::vector<std::optional<Numbers>>& arrays, const Units& units,
                      std::size_t count) {
  GivenHips hips{.count = count};
  for (std::size_t i = 0; i < arrays.size(); ++i) {
    if (arrays[i]) hips.columns[i] = ColumnOf(*arrays[i], units[i]);
  }
  return hips;
}

bool NoSignal() {
  const pybind11::gil_scoped_acquire acquired;
  return PyErr_CheckSignals() == 0;
}

}  // namespace Python
