// The hip model for many trials at once, in the widest vectors that the processor has. The same
// bits on every processor: no fused operations, no function of the C library.
//
// Against Sila::ComputeHip: the same trials are refused; rWb comes within 1e-12 of its value and
// thetaR within 1e-9 for hips whose equilibrium is well conditioned, as those of patients are. With
// S = thetaR + thetaCE from 0.10 to 1.10 rad, thetaPol comes within 1e-9 rad and the stresses
// within 2e-9 of their values. For other S the model's own digits show where its search stops (a
// residual of 1e-10 rad, up to 1e-4 of the stress); there thetaPol comes within 1e-10 rad, and the
// stresses within 1e-9, of the equation's root in higher precision (within 1e-7 for S below 2e-4
// rad).
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "model/vocabulary.h"
#include "uncertainty/block.h"

namespace Uncertainty {

// One column a measurement, by Sila::Measurement, in its held unit; columns may be shared, between
// hips too.
using HipColumns = std::array<const Column*, Sila::kMeasurementCount>;

// Computes the results in the order of Sila::Result and in its units. A trial that the model
// refuses is kRefused in all of them, and so is one whose l/2, radius or weight is not above 0,
// whose CE angle is beyond half a turn, or whose rotation is beyond 1000 rad.
void ComputeHips(const HipColumns& inputs, std::size_t trials,
                 std::span<Column, Sila::kResultCount> results);

}  // namespace Uncertainty
