// The names are those of the columns of uncertainties, with or without their ending.
#include "columns/default_reading.h"

#include "columns/cohort_error.h"
#include "columns/column_title.h"
#include "columns/near_title.h"
#include "columns/uncertainty_columns.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

[[noreturn]] void RefuseName(std::string_view name) {
  std::string meant;
  if (const auto near = FindNearUncertainty(name)) meant = "; is " + *near + " meant?";
  if (const auto near = FindNearTitle(name)) {
    meant = "; is " + std::string(Sila::RowOf(near->measurement).key) + " meant?";
  }
  throw CohortError(Quoted(name) + " is no measurement" + meant);
}

// The unit in words; of a table's two the one that is there.
std::optional<std::string> UnitText(const DefaultReading& reading, std::string_view unit) {
  const std::string text = PlainName(unit);
  if (text.empty()) return reading.unit;
  if (reading.unit && *reading.unit != text) {
    throw CohortError("the unit " + Quoted(text) + " is not that of the name, " +
                      Quoted(*reading.unit));
  }
  return text;
}

}  // namespace

DefaultReading DefaultReadingNamed(std::string_view name) {
  Title title = ReadTitle(name);
  if (title.name == kMagnificationName) return {std::nullopt, title.unit};
  if (const auto measurement = MeasurementNamed(title)) return {measurement, title.unit};
  const std::optional<UncertaintyTitle> named = UncertaintyNamed(title);
  if (!named) RefuseName(name);
  return {named->measurement, title.unit};
}

double HeldDefault(const DefaultReading& reading, std::string_view unit, double u) {
  const std::optional<std::string> text = UnitText(reading, unit);
  if (!reading.measurement) {
    if (!text || *text == "1") return u;
    throw CohortError("a magnification has no unit, not " + Quoted(*text));
  }
  const Sila::Kind kind = Sila::RowOf(*reading.measurement).kind();
  if (const auto known = UnitIn({"", text}, *reading.measurement)) {
    return Sila::ToHeld(kind, *known, u);
  }
  throw CohortError("the unit " + Quoted(*text) + " does not fit; known are " + KnownUnits(kind));
}

}  // namespace Cohort
