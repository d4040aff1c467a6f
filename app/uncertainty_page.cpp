// Readings, results and budget as tables on the report's sheet.
#include "app/uncertainty_page.h"

#include <cstddef>
#include <vector>

#include "case/case_texts.h"
#include "case/date_text.h"
#include "case/number_text.h"
#include "report/comments.h"
#include "report/sheet.h"
#include "report/uncertain_rows.h"

namespace {

using Print::IntervalTitle;
using Print::Sheet;
using Print::UncertainRow;
using Uncertainty::kMagnification;

// Right ends of the columns of numbers, twips from the paper's edge.
constexpr double kFirstColumn = 3700.0;
constexpr double kColumnWidth = 1750.0;

double ColumnEnd(std::size_t column) {
  return kFirstColumn + kColumnWidth * static_cast<double>(column);
}

// A label at the margin, then texts that end at their columns.
void PrintLine(PrinterPage& page, const QString& label, const std::vector<QString>& texts) {
  page.PrintWithoutFeed(label);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    page.SetCurrentX(ColumnEnd(i) - page.TextWidth(texts[i]));
    page.PrintWithoutFeed(texts[i]);
  }
  page.LineFeed();
}

void PrintPatient(PrinterPage& page, const UncertaintyPage& printed) {
  const PatientTexts patient = Vse::PatientTextsOf(printed.data.patient);
  QString name = QStringLiteral("Name");
  QString hip = QStringLiteral("Hip");
  Print::PrintTwoColumns(page, name, hip, patient.name, patient.hip);
  QString birth = QStringLiteral("Date of birth");
  QString coverage = QStringLiteral("Coverage");
  const QString percent =
      IntervalTitle(printed.checked.coverage, printed.locale).section(u' ', 0, 1);
  Print::PrintTwoColumns(page, birth, coverage, patient.dateOfBirth, percent);
}

QString WithUnit(const QString& number, const QString& unit) {
  return number.isEmpty() || unit.isEmpty() ? number : number + u' ' + unit;
}

QString ValueOf(const UncertaintyPage& printed, std::size_t source) {
  if (source == kMagnification) {
    const auto& factor = printed.checked.reading.magnification;
    return factor ? Vse::NumberText(factor->value, printed.locale) : QStringLiteral("none");
  }
  const Sila::MeasurementRow& row = Sila::kMeasurements[source];
  const double held = Sila::ValueOf(printed.data.inputs, row);
  const double value = Sila::FromHeld(row.kind(), UnitHere(row.kind()), held);
  return WithUnit(Vse::NumberText(value, printed.locale), UnitOfSource(source));
}

bool IsThere(const UncertaintyPage& printed, std::size_t source) {
  return printed.data.inputs.bodyWeight || source != Sila::IndexOf(Sila::Measurement::BodyWeight);
}

void PrintReadings(PrinterPage& page, const UncertaintyPage& printed) {
  PrintLine(page, QStringLiteral("Reading"),
            {QStringLiteral("Value"), QStringLiteral("u"), QStringLiteral("Distribution")});
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    if (!IsThere(printed, i)) continue;
    const ErrorEntry& entry = printed.entries.errors[i];
    const QString u = entry.u.trimmed();
    const QString spread = u.isEmpty() ? QString() : DistributionText(entry.distribution);
    PrintLine(page, CaptionOfSource(i),
              {ValueOf(printed, i), WithUnit(u, UnitOfSource(i)), spread});
  }
}

void PrintResults(PrinterPage& page, const UncertaintyPage& printed,
                  const std::vector<UncertainRow>& rows) {
  const QString title = IntervalTitle(printed.checked.coverage, printed.locale);
  PrintLine(page, QStringLiteral("Result"),
            {QStringLiteral("Value"), QStringLiteral("u"), title + QStringLiteral(" from"),
             QStringLiteral("to")});
  for (const UncertainRow& row : rows) {
    const Vse::UncertainTexts& texts = row.texts;
    PrintLine(page, row.unit.isEmpty() ? row.caption : row.caption + ", " + row.unit,
              {texts.estimate, texts.u, texts.low, texts.high});
  }
}

void PrintBudget(PrinterPage& page, const UncertaintyPage& printed,
                 const std::vector<UncertainRow>& rows) {
  const bool weightKnown = printed.data.inputs.bodyWeight.has_value();
  std::vector<QString> titles;
  std::vector<std::vector<ShareBar>> columns;
  for (const UncertainRow& row : rows) {
    titles.push_back(row.caption);
    columns.push_back(BudgetBars(printed.hip, row.id, weightKnown));
  }
  PrintLine(page, QStringLiteral("Budget: part of the variance"), titles);
  for (std::size_t i = 0; i < columns.front().size(); ++i) {
    std::vector<QString> shares;
    shares.reserve(columns.size());
    for (const std::vector<ShareBar>& bars : columns) {
      shares.push_back(bars[i].share ? ShareText(*bars[i].share) : QString());
    }
    PrintLine(page, columns.front()[i].label, shares);
  }
}

void PrintBody(const Sheet& sheet, const UncertaintyPage& printed) {
  PrinterPage& page = sheet.page;
  const bool weightKnown = printed.data.inputs.bodyWeight.has_value();
  const std::vector<UncertainRow> rows =
      Print::UncertainRows(printed.hip, weightKnown, printed.locale);
  page.Print(QStringLiteral("How sure is this case"));
  page.SetFontSize(10);
  page.LineFeed();
  PrintPatient(page, printed);
  page.LineFeed();
  PrintReadings(page, printed);
  page.LineFeed();
  PrintResults(page, printed, rows);
  page.LineFeed();
  const QString notice = Print::UncertaintyNotice(printed.hip);
  if (!notice.isEmpty()) Print::PrintComments(sheet, notice + "\n\n");
  PrintBudget(page, printed, rows);
  page.LineFeed();
  Print::PrintComments(sheet, Print::kUncertaintyNote.toString());
}

}  // namespace

std::vector<ShareBar> BudgetBars(const std::optional<Uncertainty::HipUncertainty>& hip,
                                 Sila::Result result, bool weightKnown) {
  const Uncertainty::HipResultUncertainty* found = Print::Find(hip, result);
  std::vector<ShareBar> bars;
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    if (i == Sila::IndexOf(Sila::Measurement::BodyWeight) && !weightKnown) continue;
    ShareBar bar = {CaptionOfSource(i), {}};
    if (found != nullptr && !found->spread.budget.empty()) {
      const auto& budget = found->spread.budget;
      bar.share = i < budget.size() ? budget[i] : 0.0;  // true lengths have no magnification
    }
    bars.push_back(bar);
  }
  return bars;
}

QString PrintUncertainty(PrintTarget& target, const UncertaintyPage& printed, QDate date) {
  PrinterPage page(target);
  page.SetFontName(QStringLiteral("Times New Roman"));
  const Sheet sheet{page, Vse::ShortDate(date, printed.locale)};
  Print::PrintPageHeader(sheet, QStringLiteral("TELMARION"));
  PrintBody(sheet, printed);
  return page.EndDocument();
}
