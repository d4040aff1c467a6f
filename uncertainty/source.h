// What is uncertain, and how. Terms and symbols follow the guide to the expression of uncertainty
// in measurement (JCGM 100:2008) and its supplement on the propagation of distributions
// (JCGM 101:2008).
#pragma once

namespace Uncertainty {

// How the errors of a source are spread about its value.
//   Normal      the default
//   Uniform     a rectangle of half-width u·√3
//   Triangular  a symmetric triangle of half-width u·√6
enum class Distribution { Normal, Uniform, Triangular };

// One quantity that was read, with its error. Errors of different sources are independent; where
// they are not, the quantities share a source and the model's map says how.
struct Source {
  double value = 0.0;  // in the unit of the quantity
  double u = 0.0;      // standard uncertainty in the same unit, finite and at least 0
  Distribution distribution = Distribution::Normal;
};

}  // namespace Uncertainty
