// The measurements and results of the hip model that errors are carried through, each once.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Uncertainty {

enum HipInput : std::size_t {
  kLizm,
  kXizm,
  kZizm,
  kCizm,
  kHizm,
  kZasuk,
  kThetaCE,
  kHeadRadius,
  kBodyWeight,
  kHipInputs  // how many there are
};

enum HipResult : std::size_t { kRWb, kThetaR, kThetaPol, kPmaxWb, kPmax, kHipResults };

struct HipInputInfo {
  std::string_view key;
  bool isLength = false;   // divided by the magnification of the picture
  bool aboveZero = false;  // a value that is not above 0 has no meaning
};

// In the units of the model: cm, radians, the radius in m, kg.
inline constexpr std::array<HipInputInfo, kHipInputs> kHipInputInfo = {{
    {"lizm", true, true},
    {"xizm", true, false},
    {"zizm", true, false},
    {"Cizm", true, false},
    {"Hizm", true, false},
    {"zasuk", false, false},
    {"thetaCE", false, false},
    {"headRadius", true, true},
    {"bodyWeight", false, true},
}};

}  // namespace Uncertainty
