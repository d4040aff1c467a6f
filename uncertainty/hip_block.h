// The hip model for many trials at once, in the widest vectors that the processor has. The same
// bits on every processor: no fused operations, no function of the C library.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "uncertainty/block.h"
#include "uncertainty/hip_inputs.h"

namespace Uncertainty {

// One column an input, in the units of the model (cm, rad, m, kg); columns may be shared, between
// hips too.
using HipColumns = std::array<const Column*, kHipInputs>;

// Computes the results in the order and units of HipResult: rWb, thetaR and thetaPol in degrees,
// pmaxWb in m^-2, pmax in Pa. A trial that the model refuses is kRefused in all of them.
void ComputeHips(const HipColumns& inputs, std::size_t trials,
                 std::span<Column, kHipResults> results);

}  // namespace Uncertainty
