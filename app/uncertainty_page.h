// The printed page of the window on uncertainty.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <QStringView>
#include <optional>

#include "app/reading_errors.h"
#include "case/case_record.h"
#include "platform/print_target.h"
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

// Prints one page with the header and the footer of the report. Returns what went wrong, for the
// user; empty when the whole document has arrived.
QString PrintUncertainty(PrintTarget& target, const UncertaintyPage& printed, QDate date);
