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

// Names in another case are other columns: "Status" may well be the patient's.
void CheckIsNotAdded(std::string_view text) {
  const std::string name = VisibleName(text);
  const bool isResult = std::any_of(Sila::kResults.begin(), Sila::kResults.end(),
                                    [&](const auto& result) { return result.key == name; });
  if (!isResult && name != kStatusName) return;
  throw CohortError("there is a column " + name +
                    " already, which the program adds; remove or rename it");
}

[[noreturn]] void RefuseUnit(const Title& title, const Sila::MeasurementRow& row) {
  throw CohortError("the unit " + Quoted(title.unit.value_or("")) + " of column " +
                    std::string(row.key) + " is not known; known are " + KnownUnits(row.kind()));
}

void TakeColumn(Columns& columns, std::size_t field) {
  CheckIsNotAdded(columns.names[field]);
  const Title title = ReadTitle(columns.names[field]);
  const std::optional<Sila::Measurement> named = MeasurementNamed(title);
  if (!named) return;
  const Sila::MeasurementRow& row = Sila::RowOf(*named);
  const std::optional<Sila::Unit> unit = UnitIn(title, *named);
  if (!unit && row.kind() == Sila::Kind::Weight) return;
  if (columns[*named]) throw CohortError("there are two columns " + std::string(row.key));
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
  const std::optional<NearTitle> near = FindNearTitle(name);
  if (!near || (columns[near->measurement] && !near->sameLetters)) return std::nullopt;
  return notUsed + "; is " + KeyOf(near->measurement) + " meant?";
}

void RemarkOnUnusedColumns(Columns& columns) {
  for (std::size_t i = 0; i < columns.names.size(); ++i) {
    if (IsInput(columns, i)) continue;
    if (const auto remark = RemarkOn(columns, columns.names[i])) columns.remarks.push_back(*remark);
  }
}

}  // namespace

Columns FindColumns(std::vector<std::string> names) {
  Columns columns;
  columns.names = std::move(names);
  for (std::size_t i = 0; i < columns.names.size(); ++i) TakeColumn(columns, i);
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

bool IsInput(const Columns& columns, std::size_t field) {
  return std::any_of(columns.inputs.begin(), columns.inputs.end(),
                     [&](const auto& input) { return input && input->field == field; });
}

bool HaveSameNames(const Columns& one, const Columns& other) {
  return std::equal(
      one.names.begin(), one.names.end(), other.names.begin(), other.names.end(),
      [](const std::string& a, const std::string& b) { return PlainName(a) == PlainName(b); });
}

}  // namespace Cohort
