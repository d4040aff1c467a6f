// The eight measures that are taken from the radiograph, in the order of the case form.
#pragma once

#include <array>

enum class Measure { Lizm, Xizm, Zizm, Cizm, Hizm, Zasuk, ThetaCE, HeadRadius };

inline constexpr std::array kMeasures = {Measure::Lizm,    Measure::Xizm,      Measure::Zizm,
                                         Measure::Cizm,    Measure::Hizm,      Measure::Zasuk,
                                         Measure::ThetaCE, Measure::HeadRadius};
