// Numbers of a propagation as words.
#include "report/uncertain_rows.h"

#include <string_view>

#include "case/number_text.h"

namespace Print {

namespace {

using Uncertainty::Completeness;
using Uncertainty::HipResultUncertainty;
using Uncertainty::HipUncertainty;

Vse::UncertainTexts TextsOf(const HipResultUncertainty& result, const QLocale& locale) {
  std::optional<Vse::CoverageEnds> ends;
  if (result.spread.interval) {
    ends = Vse::CoverageEnds{result.spread.interval->low, result.spread.interval->high};
  }
  return Vse::UncertainTextsOf(result.estimate, result.spread.u, ends, locale);
}

QString RefusalOf(Sila::HipOutcome outcome) {
  if (outcome == Sila::HipOutcome::DivisionByZero) {
    return QStringLiteral("No results for this case: division by zero");
  }
  return QStringLiteral(
      "No results for this case: in this range of input data you could not use this model");
}

}  // namespace

const HipResultUncertainty* Find(const std::optional<HipUncertainty>& hip, Sila::Result id) {
  if (!hip) return nullptr;
  const auto& result = hip->results[Sila::IndexOf(id)];
  return result ? &*result : nullptr;
}

QStringList CellsOf(const UncertainRow& row) {
  const Vse::UncertainTexts& texts = row.texts;
  const QString caption = row.unit.isEmpty() ? row.caption : row.caption + ", " + row.unit;
  const QString interval = texts.low.isEmpty() ? QString() : texts.low + " to " + texts.high;
  return {caption, texts.estimate, texts.u, interval};
}

std::vector<UncertainRow> UncertainRows(const std::optional<HipUncertainty>& hip, bool weightKnown,
                                        const QLocale& locale) {
  std::vector<UncertainRow> rows;
  for (const Sila::ResultRow& row : Sila::kResults) {
    if (row.needsWeight && !weightKnown) continue;
    UncertainRow own = {row.id, QString::fromUtf8(row.caption), QString::fromUtf8(row.unit), {}};
    if (const HipResultUncertainty* result = Find(hip, row.id))
      own.texts = TextsOf(*result, locale);
    rows.push_back(own);
  }
  return rows;
}

QString IntervalTitle(double coverage, const QLocale& locale) {
  constexpr int kDecimals = 2;  // so that 99.9 does not show its last bits
  const double percent = QString::number(100.0 * coverage, 'f', kDecimals).toDouble();
  return Vse::NumberText(percent, locale) + QStringLiteral(" % interval");
}

QString UncertaintyNotice(const std::optional<HipUncertainty>& hip) {
  if (!hip) return QStringLiteral("No results while an entry is marked.");
  if (hip->outcome != Sila::HipOutcome::Ok) return RefusalOf(hip->outcome);
  const QString refused = QStringLiteral("The model refuses %1 of %2 trials")
                              .arg(hip->trials - hip->ok)
                              .arg(hip->trials);
  switch (hip->completeness) {
    case Completeness::Complete:
      return {};
    case Completeness::SomeRefused:
      return refused + QStringLiteral(
                           ": there is no u and no budget. The interval counts them as above all "
                           "others.");
    case Completeness::TooManyRefused:
      break;
  }
  return refused + QStringLiteral(
                       ", more than 0.2 %: there is no u, no interval and no budget. With "
                       "such errors the case is too near the edge of what the model covers.");
}

QString TabbedTable(const std::vector<UncertainRow>& rows, const QString& intervalTitle) {
  QString table = QStringList{QStringLiteral("Result"),
                              QStringLiteral("Unit"),
                              QStringLiteral("Value"),
                              QStringLiteral("u"),
                              intervalTitle + QStringLiteral(" from"),
                              intervalTitle + QStringLiteral(" to")}
                      .join(u'\t') +
                  u'\n';
  for (const UncertainRow& row : rows) {
    const Vse::UncertainTexts& texts = row.texts;
    table +=
        QStringList{row.caption, row.unit, texts.estimate, texts.u, texts.low, texts.high}.join(
            u'\t') +
        u'\n';
  }
  return table;
}

}  // namespace Print
