// The part of telmarion._core that carries reading errors through the model.
#pragma once

#include <pybind11/pybind11.h>

namespace Python {

void AddUncertainty(pybind11::module_& module);

}  // namespace Python
