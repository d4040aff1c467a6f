// What the windows say of the results of a hip and how sure they are: the same on screen, on paper
// and on the clipboard.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>
#include <vector>

#include "case/uncertain_text.h"
#include "uncertainty/hip_uncertainty.h"

namespace Print {

// What a reader has to know of the numbers, on screen and on paper.
inline constexpr QStringView kUncertaintyNote =
    u"u is the standard uncertainty of a reading. Each laboratory measures its own: repeat the "
    u"readings and take their standard deviation. The interval contains the error of the readings, "
    u"not the error of the model itself. For research and teaching only.";

// A result with the unit in which it stands.
struct UncertainRow {
  Sila::Result id = Sila::Result::RWb;
  QString caption;
  QString unit;  // empty for a ratio
  Vse::UncertainTexts texts;
};

// A row for each result that the hip can have: without a body weight there is none for what needs
// one. Texts are empty where there is no number, and all are when nothing was computed.
std::vector<UncertainRow> UncertainRows(const std::optional<Uncertainty::HipUncertainty>& hip,
                                        bool weightKnown, const QLocale& locale);

// Caption with unit, estimate, u, interval: the cells of a table on screen.
QStringList CellsOf(const UncertainRow& row);

// The result's own part; null where there is none.
const Uncertainty::HipResultUncertainty* Find(const std::optional<Uncertainty::HipUncertainty>& hip,
                                              Sila::Result id);

// "95 % interval".
QString IntervalTitle(double coverage, const QLocale& locale);

// Why there is less than a user expects; empty when nothing is missing.
QString UncertaintyNotice(const std::optional<Uncertainty::HipUncertainty>& hip);

// Lines of fields with tabs between, for a spreadsheet.
QString TabbedTable(const std::vector<UncertainRow>& rows, const QString& intervalTitle);

}  // namespace Print
