// Names and brackets.
#include "columns/column_title.h"

#include <algorithm>
#include <vector>

#include "columns/visible_text.h"

namespace Cohort {

namespace {

// What a header may write for a unit.
std::vector<std::string_view> NamesOf(Sila::Unit unit) {
  switch (unit) {
    case Sila::Unit::Millimetre:
      return {"mm"};
    case Sila::Unit::Centimetre:
      return {"cm"};
    case Sila::Unit::Metre:
      return {"m"};
    case Sila::Unit::Degree:
      return {"°", "deg"};
    case Sila::Unit::Radian:
      return {"rad"};
    case Sila::Unit::Kilogram:
      return {"kg"};
  }
  return {};
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

std::optional<Sila::Measurement> MeasurementNamed(const Title& title) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (PlainName(row.key) == title.name) return row.id;
  }
  return std::nullopt;
}

std::optional<Sila::Unit> UnitIn(const Title& title, Sila::Measurement measurement) {
  const std::span<const Sila::Unit> units = Sila::UnitsOf(Sila::RowOf(measurement).kind());
  if (!title.unit) return units.front();
  for (const Sila::Unit unit : units) {
    const std::vector<std::string_view> names = NamesOf(unit);
    if (std::find(names.begin(), names.end(), *title.unit) != names.end()) return unit;
  }
  return std::nullopt;
}

std::string KnownUnits(Sila::Kind kind) {
  std::string known;
  for (const Sila::Unit unit : Sila::UnitsOf(kind)) {
    for (const std::string_view name : NamesOf(unit)) {
      known += (known.empty() ? "" : ", ") + std::string(name);
    }
  }
  return known;
}

}  // namespace Cohort
