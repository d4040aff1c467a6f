// A table of hips to test with, and what any correct model makes of it.
#pragma once

#include <string>

namespace CohortText {

inline const std::string kHeader = "lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight";

// l/2 10.40, x 0.50, z 6.00, C 4.40, H 16.00 cm, no rotation, CE 30 degrees, radius 2.5 cm, 70 kg.
inline const std::string kDefaultHip = "10.40,0.50,6.00,4.40,16.00,0.0,30.0,0.025,70";

// Its results, to twelve digits and more.
inline constexpr double kRWb = 2.81222677558;
inline constexpr double kThetaR = 8.4764903085;     // degrees
inline constexpr double kThetaPol = 16.4157852045;  // degrees
inline constexpr double kPmaxWb = 3006.76110604;    // m^-2
inline constexpr double kPmax = 2066847.58429341;   // Pa
inline constexpr double kRelativeTolerance = 1e-11;

// `text` with the first `from` in it made `to`.
inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

}  // namespace CohortText
