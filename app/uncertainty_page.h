// The printed page of the window on uncertainty, and the bars that both show.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

#include "app/reading_errors.h"
#include "case/case_record.h"
#include "platform/print_target.h"
#include "platform/share_bars.h"
#include "uncertainty/hip_uncertainty.h"

// What is on screen. References last as long as the printing.
struct UncertaintyPage {
  const CaseData& data;
  const ErrorEntries& entries;
  const CheckedErrors& checked;
  const std::optional<Uncertainty::HipUncertainty>& hip;
  QLocale locale;
};

// Title of the document.
inline constexpr QStringView kUncertaintyTitle = u"TELMARION uncertainty";

// A bar for each source that the hip has; without lengths where there is no budget.
std::vector<ShareBar> BudgetBars(const std::optional<Uncertainty::HipUncertainty>& hip,
                                 Sila::Result result, bool weightKnown);

// Prints one page with the header and the footer of the report. Returns what went wrong, for the
// user; empty when the whole document has arrived.
QString PrintUncertainty(PrintTarget& target, const UncertaintyPage& printed, QDate date);
