// What is kept of a session that ends before its case is saved: the confirmed case, to the last
// digit, the entries of a form that is still open, and marks on a radiograph.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <optional>

#include "case/case_entries.h"
#include "case/case_record.h"

struct KeptWork {
  std::optional<CaseData> data;        // the confirmed case, while it is unsaved
  QString file;                        // the case file it came from; empty for a new case
  std::optional<CaseEntries> entries;  // as typed, while the form is open
  bool weightUnknownInForm = false;    // of the open form: OK was pressed without a weight
  bool formIsMeasured = false;         // it came up with the entries of the measuring window

  // The case whose stresses a refused one still has; nothing when `data` was computed itself.
  std::optional<CaseData> computedBefore = {};

  // Of the measuring window, which alone knows what is in it: marks that were not used yet.
  QJsonObject marks = {};

  bool IsMarksOnly() const { return !data && !entries && !marks.isEmpty(); }
  bool IsEmpty() const { return !data && !entries && marks.isEmpty(); }
  bool operator==(const KeptWork&) const = default;
};

namespace Vse {

// The work as text (JSON, UTF-8) that ParseKeptWork gives back exactly. Numbers are finite.
QByteArray ComposeKeptWork(const KeptWork& work);

// The work that a text holds. Empty when the text is damaged, cut short or not of this kind.
std::optional<KeptWork> ParseKeptWork(const QByteArray& text);

}  // namespace Vse
