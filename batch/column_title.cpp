// Titles, units and the line that names the separator.
#include "batch/column_title.h"

#include <algorithm>
#include <span>

#include "batch/visible_text.h"

namespace Cohort {

namespace {

struct UnitName {
  std::string_view text;
  ColumnUnit unit;
};

constexpr std::array<UnitName, 1> kWeights = {{{"kg", ColumnUnit::Kilogram}}};
constexpr std::array<UnitName, 3> kAngles = {
    {{"°", ColumnUnit::Degree}, {"deg", ColumnUnit::Degree}, {"rad", ColumnUnit::Radian}}};
constexpr std::array<UnitName, 3> kRadii = {
    {{"m", ColumnUnit::Metre}, {"cm", ColumnUnit::Centimetre}, {"mm", ColumnUnit::Millimetre}}};
constexpr std::array<UnitName, 2> kLengths = {
    {{"cm", ColumnUnit::Centimetre}, {"mm", ColumnUnit::Millimetre}}};

// The units of an input, the one that holds without brackets first.
std::span<const UnitName> UnitsOf(std::size_t input) {
  const std::string_view name = kInputNames[input];
  if (name == "bodyWeight") return kWeights;
  if (name == "zasuk" || name == "thetaCE") return kAngles;
  if (name == "headRadius") return kRadii;
  return kLengths;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

Title ReadTitle(std::string_view text) {
  const std::string plain = PlainName(text);
  if (plain.empty() || (plain.back() != ']' && plain.back() != ')')) return {plain, std::nullopt};
  const std::size_t bracket = plain.find(plain.back() == ']' ? '[' : '(');
  if (bracket == std::string::npos) return {plain, std::nullopt};
  const std::string_view view = plain;
  return {std::string(WithoutBlanks(view.substr(0, bracket))),
          std::string(WithoutBlanks(view.substr(bracket + 1, plain.size() - bracket - 2)))};
}

std::optional<std::size_t> InputNamed(const Title& title) {
  const auto* found =
      std::find_if(kInputNames.begin(), kInputNames.end(),
                   [&](std::string_view name) { return PlainName(name) == title.name; });
  if (found == kInputNames.end()) return std::nullopt;
  return static_cast<std::size_t>(found - kInputNames.begin());
}

std::optional<ColumnUnit> UnitIn(const Title& title, std::size_t input) {
  const std::span<const UnitName> units = UnitsOf(input);
  if (!title.unit) return units.front().unit;
  const auto found = std::find_if(units.begin(), units.end(),
                                  [&](const UnitName& unit) { return unit.text == *title.unit; });
  return found == units.end() ? std::nullopt : std::optional(found->unit);
}

std::string KnownUnits(std::size_t input) {
  std::string known;
  for (const UnitName& unit : UnitsOf(input)) {
    known += (known.empty() ? "" : ", ") + std::string(unit.text);
  }
  return known;
}

// Programs that read the line as a record may have put quotes around it or delimiters behind it.
std::optional<char> NamedSeparator(std::string_view line) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  constexpr std::string_view kWord = "sep=";
  if (line.starts_with(kMark)) line.remove_prefix(kMark.size());
  if (line.starts_with('"')) line.remove_prefix(1);
  if (line.size() <= kWord.size() || PlainName(line.substr(0, kWord.size())) != kWord) {
    return std::nullopt;
  }
  const char separator = line[kWord.size()];
  const std::string_view rest = line.substr(kWord.size() + 1);
  if (rest.find_first_not_of(std::string{separator, '"', ' '}) != std::string_view::npos) {
    return std::nullopt;
  }
  return separator;
}

}  // namespace Cohort
