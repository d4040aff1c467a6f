// From names to columns, and the sentences about those that are missing or unused.
#include "columns/header.h"

#include <algorithm>
#include <utility>

#include "columns/cohort_error.h"
#include "columns/column_title.h"
#include "columns/near_title.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

std::string KeyOf(Sila::Measurement id) {
  return std::string(Sila::RowOf(id).key);
}

std::vector<std::string> ResultNames() {
  std::vector<std::string> names;
  names.reserve(Sila::kResultCount + 1);
  for (const Sila::ResultRow& result : Sila::kResults) names.emplace_back(result.key);
  names.emplace_back(kStatusName);
  return names;
}

[[noreturn]] void RefuseUnit(const Title& title, const Sila::MeasurementRow& row) {
  throw CohortError("the unit " + Quoted(title.unit.value_or("")) + " of column " +
                    std::string(row.key) + " is not known; known are " + KnownUnits(row.kind()));
}

[[noreturn]] void RefuseSecond(std::string_view name) {
  throw CohortError("there are two columns " + std::string(name));
}

void TakeOnce(std::optional<std::size_t>& place, std::size_t field, std::string_view name) {
  if (place) RefuseSecond(name);
  place = field;
}

void TakeUncertainty(UncertaintyColumns& columns, std::size_t field, const Title& title) {
  const std::optional<UncertaintyTitle> named = UncertaintyNamed(title);
  if (!named) return;
  if (named->isValue) return TakeOnce(columns.magnification, field, title.name);
  if (!named->measurement) return TakeOnce(columns.magnificationU, field, title.name);
  std::optional<UncertaintyColumn>& column = columns.u[Sila::IndexOf(*named->measurement)];
  if (column) RefuseSecond(UncertaintyName(KeyOf(*named->measurement)));
  column = UncertaintyColumn{field, UnitIn(title, *named->measurement)};
}

// A title without a unit has that of its measurement. Of an angle in radians it is asked for, since
// degrees are likelier.
void SettleUnits(Columns& columns) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    auto& column = columns.uncertainty.u[Sila::IndexOf(row.id)];
    if (!column || !columns[row.id] || ReadTitle(columns.names[column->field]).unit) continue;
    column->unit = columns[row.id]->unit;
    if (*column->unit != Sila::Unit::Radian) continue;
    throw CohortError("the column " + UncertaintyName(row.key) + " needs a unit, since " +
                      std::string(row.key) + " is in radians; known are " + KnownUnits(row.kind()));
  }
}

void TakeColumn(Columns& columns, std::size_t field) {
  const Title title = ReadTitle(columns.names[field]);
  const std::optional<Sila::Measurement> named = MeasurementNamed(title);
  if (!named) return TakeUncertainty(columns.uncertainty, field, title);
  const Sila::MeasurementRow& row = Sila::RowOf(*named);
  const std::optional<Sila::Unit> unit = UnitIn(title, *named);
  if (!unit && row.kind() == Sila::Kind::Weight) return;
  if (columns[*named]) RefuseSecond(row.key);
  if (!unit) RefuseUnit(title, row);
  columns.inputs[Sila::IndexOf(*named)] = InputColumn{field, *unit};
}

// What was perhaps meant by what is missing: "; "theta CE" is perhaps thetaCE".
std::string PerhapsMeant(const Columns& columns) {
  std::string meant;
  for (const std::string& name : columns.names) {
    const std::optional<NearTitle> near = FindNearTitle(name);
    const bool isMissing =
        near && near->measurement != Sila::Measurement::BodyWeight && !columns[near->measurement];
    if (!isMissing) continue;
    meant += meant.empty() ? "; " : ", ";
    meant += Quoted(name) + " is perhaps " + KeyOf(near->measurement);
  }
  return meant;
}

// A column that differs in nothing but signs is mentioned beside the one that is used, any other
// only in its absence.
std::optional<std::string> RemarkOn(const Columns& columns, const std::string& name) {
  const std::string notUsed = "the column " + Quoted(name) + " is not used";
  if (const std::optional<Sila::Measurement> named = MeasurementNamed(ReadTitle(name))) {
    return notUsed + ", since its unit is not known; " + KeyOf(*named) + " is in " +
           KnownUnits(Sila::RowOf(*named).kind());
  }
  if (const std::optional<std::string> meant = FindNearUncertainty(name)) {
    return notUsed + "; is " + *meant + " meant?";
  }
  const std::optional<NearTitle> near = FindNearTitle(name);
  if (!near || (columns[near->measurement] && !near->sameLetters)) return std::nullopt;
  return notUsed + "; is " + KeyOf(near->measurement) + " meant?";
}

void RemarkOnUncertaintyOfNothing(Columns& columns) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (!columns.uncertainty.u[Sila::IndexOf(row.id)] || columns[row.id]) continue;
    columns.remarks.push_back("the column " + UncertaintyName(row.key) +
                              " is not used, since there is no column " + std::string(row.key));
  }
}

void RemarkOnUnusedColumns(Columns& columns) {
  RemarkOnUncertaintyOfNothing(columns);
  for (std::size_t i = 0; i < columns.names.size(); ++i) {
    if (IsInput(columns, i)) continue;
    if (const auto remark = RemarkOn(columns, columns.names[i])) columns.remarks.push_back(*remark);
  }
}

}  // namespace

Columns FindColumns(std::vector<std::string> names) {
  Columns columns;
  columns.names = std::move(names);
  CheckAreNotAdded(columns, ResultNames());
  for (std::size_t i = 0; i < columns.names.size(); ++i) TakeColumn(columns, i);
  SettleUnits(columns);
  RemarkOnUnusedColumns(columns);
  return columns;
}

std::string MissingColumns(const Columns& columns) {
  std::string missing;
  int count = 0;
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    if (!columns[row.id] && !row.later)
      missing += (count++ == 0 ? "" : ", ") + std::string(row.key);
  }
  if (count == 0) return {};
  return (count == 1 ? "the column " + missing + " is missing"
                     : "the columns " + missing + " are missing") +
         PerhapsMeant(columns);
}

// Names in another case are other columns: "Status" may well be the patient's.
void CheckAreNotAdded(const Columns& columns, const std::vector<std::string>& added) {
  for (const std::string& text : columns.names) {
    const std::string name = VisibleName(text);
    if (std::find(added.begin(), added.end(), name) == added.end()) continue;
    throw CohortError("there is a column " + name +
                      " already, which the program adds; remove or rename it");
  }
}

bool IsInput(const Columns& columns, std::size_t field) {
  if (columns.uncertainty.Holds(field)) return true;
  return std::any_of(columns.inputs.begin(), columns.inputs.end(),
                     [&](const auto& input) { return input && input->field == field; });
}

bool HaveSameNames(const Columns& one, const Columns& other) {
  return std::equal(
      one.names.begin(), one.names.end(), other.names.begin(), other.names.end(),
      [](const std::string& a, const std::string& b) { return PlainName(a) == PlainName(b); });
}

}  // namespace Cohort
