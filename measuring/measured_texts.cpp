#include "measuring/measured_texts.h"

#include "case/case_places.h"
#include "case/case_texts.h"
#include "measuring/mark_uncertainty.h"

namespace Measuring {

namespace {

QString HowMuch(const Draft& draft, const MarkRow& row) {
  const std::size_t set = draft[row.id].size();
  if (set == 0) return {};
  if (set < row.least()) return QStringLiteral("%1 of %2").arg(set).arg(row.least());
  return QStringLiteral("✓");
}

struct Caption {
  QString name;
  QString unit;
};
Caption CaptionOf(std::size_t measured) {
  const Sila::MeasurementRow& row = RowOfMeasured(measured);
  const bool isAngle = row.kind() == Sila::Kind::Angle;
  return {Vse::kWindowCaptions[Sila::IndexOf(row.id)].text.toString(),
          isAngle ? QStringLiteral("°") : QStringLiteral("cm")};
}

// The estimates alone, as the results panel will show them.
std::vector<Print::UncertainRow> PlainRows(const Findings& found, const QLocale& locale) {
  const bool weightKnown = found.record && !found.record->data.weightUnknown();
  std::vector<Print::UncertainRow> rows = Print::UncertainRows({}, weightKnown, locale);
  if (!found.record || found.outcome != Sila::HipOutcome::Ok) return rows;
  for (Print::UncertainRow& row : rows) {
    row.texts.estimate = Vse::ResultTextsOf(*found.record, locale)[row.id];
  }
  return rows;
}

// What is beside the picture, as the case has it.
QStringList EnteredTexts(const Findings& found) {
  QStringList texts;
  const auto add = [&](Sila::Measurement id, const QString& value, QStringView unit) {
    if (value.isEmpty()) return;
    texts << Vse::kWindowCaptions[Sila::IndexOf(id)].text.toString() + QStringLiteral(": ") +
                 value + unit.toString();
  };
  add(Sila::Measurement::Zasuk, found.entries[Sila::Measurement::Zasuk].text, u"°");
  add(Sila::Measurement::BodyWeight, found.entries.bodyWeight, u" kg");
  return texts;
}

QStringList MeasuredTexts(const Findings& found) {
  QStringList texts;
  for (const QStringList& cells : MeasurementCells(found)) {
    texts << cells[0] + QStringLiteral(": ") + cells[1];
  }
  return texts;
}

QStringList ResultTexts(const Findings& found, const QLocale& locale) {
  QStringList texts;
  for (const Print::UncertainRow& row : ResultRows(found, locale)) {
    const QStringList cells = Print::CellsOf(row);
    const QString interval =
        cells[3].isEmpty() ? QString() : QStringLiteral(" (") + cells[3] + u')';
    texts << cells[0] + QStringLiteral(": ") + cells[1] + interval;
  }
  return texts;
}

QString Line(const QStringList& fields) {
  return fields.join(u'\t') + u'\n';
}

}  // namespace

std::vector<QStringList> MarkCells(const Draft& draft) {
  std::vector<QStringList> cells;
  for (const MarkRow& row : kMarks) {
    const QString number = QString::number(IndexOf(row.id) + 1);
    cells.push_back({number + QStringLiteral("  ") + row.caption.toString(), HowMuch(draft, row)});
  }
  return cells;
}

std::vector<QStringList> MeasurementCells(const Findings& found) {
  std::vector<QStringList> cells;
  for (std::size_t i = 0; i < found.measurements.size(); ++i) {
    const Caption caption = CaptionOf(i);
    const MeasurementFinding& own = found.measurements[i];
    cells.push_back({caption.name + QStringLiteral(", ") + caption.unit,
                     own.text.isEmpty() ? own.missing : own.text});
  }
  return cells;
}

std::vector<Print::UncertainRow> ResultRows(const Findings& found, const QLocale& locale) {
  if (!found.sure) return PlainRows(found, locale);
  return Print::UncertainRows(found.sure, !found.record->data.weightUnknown(), locale);
}

QStringList NoticesOf(const Findings& found) {
  QStringList notices = found.notices;
  for (const Sila::Measurement id : found.wrongEntries) {
    notices << Vse::kWindowCaptions[Sila::IndexOf(id)].text.toString() +
                   QStringLiteral(": not a number.");
  }
  if (!found.record) return notices;
  if (found.outcome != Sila::HipOutcome::Ok) {
    Uncertainty::HipUncertainty refused;
    refused.outcome = found.outcome;
    notices << Print::UncertaintyNotice(refused);
  } else if (found.sure) {
    notices << Print::UncertaintyNotice(found.sure);
  } else if (found.isAnErrorWrong) {
    notices << QStringLiteral("No intervals: an entry under \"How sure\" is wrong.");
  } else {
    notices << QStringLiteral(
        "Intervals need the errors of your marks: enter them under \"How sure\".");
  }
  notices.removeAll(QString());
  return notices;
}

QString SideText(const Findings& found) {
  if (!found.side.side) return QStringLiteral("The side is not known yet.");
  return *found.side.side == Landmarks::Side::Left ? QStringLiteral("Left hip")
                                                   : QStringLiteral("Right hip");
}

QStringList NumberLines(const QString& file, const Findings& found, const QLocale& locale) {
  const auto inOneLine = [](const QStringList& texts) {
    return texts.join(QStringLiteral("    "));
  };
  return QStringList{inOneLine({file, SideText(found), found.scale.name, found.scale.value}),
                     inOneLine(EnteredTexts(found) + MeasuredTexts(found)),
                     inOneLine(ResultTexts(found, locale))}
         << NoticesOf(found) << Print::kUncertaintyNote.toString();
}

QString MeasuredTable(const Findings& found, const QLocale& locale) {
  QString table =
      Line({QStringLiteral("Measurement"), QStringLiteral("Unit"), QStringLiteral("Value")});
  for (std::size_t i = 0; i < found.measurements.size(); ++i) {
    const Caption caption = CaptionOf(i);
    table += Line({caption.name, caption.unit, found.measurements[i].text});
  }
  return table + u'\n' +
         Print::TabbedTable(ResultRows(found, locale),
                            Print::IntervalTitle(Uncertainty::Settings{}.coverage, locale));
}

}  // namespace Measuring
