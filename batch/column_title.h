// The grammar of a table's first lines: which column holds what, and in which unit. Free of Qt.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Cohort {

// What is read of each hip: the measures, in their order, and behind them the body weight.
inline constexpr std::array<std::string_view, 9> kInputNames = {
    "lizm", "xizm", "zizm", "Cizm", "Hizm", "zasuk", "thetaCE", "headRadius", "bodyWeight"};
inline constexpr std::size_t kInputCount = kInputNames.size();
inline constexpr std::size_t kBodyWeight = kInputCount - 1;

enum class ColumnUnit { Centimetre, Millimetre, Metre, Degree, Radian, Kilogram };

// A column's title taken apart: "Lizm (mm)" is the name "lizm" and the unit "mm". Both are plain
// names: without regard to case, blanks around them and invisible characters.
struct Title {
  std::string name;
  std::optional<std::string> unit;  // what stands in square or round brackets behind the name
};

Title ReadTitle(std::string_view text);

// The input that a title names; its unit may be one that is not known.
std::optional<std::size_t> InputNamed(const Title& title);

// The title's unit, or the one that holds without brackets. Empty when it is not known.
std::optional<ColumnUnit> UnitIn(const Title& title, std::size_t input);

// The units that an input may have, for messages: "cm, mm".
std::string KnownUnits(std::size_t input);

// The separator that a first line such as "sep=;" names, as spreadsheets write it.
std::optional<char> NamedSeparator(std::string_view line);

}  // namespace Cohort
