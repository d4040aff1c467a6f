// All that a user has set and typed for one radiograph: what undo takes back and what is kept when
// the program ends.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringView>
#include <array>
#include <optional>

#include "case/case_entries.h"
#include "measuring/marks.h"

namespace Measuring {

// Numbers that are typed beside the picture.
enum class Entry : std::size_t {
  Magnification,
  HipHeight,
  SourceToTable,
  BallDiameter,
  LineLength,
  Rotation,
  BodyWeight
};

struct EntryRow {
  Entry id = Entry::Magnification;
  QStringView key;  // in kept work and of the control
  QStringView caption;
  QStringView unit;  // empty for a factor
};

inline constexpr std::array kEntries = {
    EntryRow{Entry::Magnification, u"magnification", u"Magnification", u""},
    EntryRow{Entry::HipHeight, u"hipHeight", u"Hip above table", u"mm"},
    EntryRow{Entry::SourceToTable, u"sourceToTable", u"Source to table", u"mm"},
    EntryRow{Entry::BallDiameter, u"ballDiameter", u"Diameter of ball", u"mm"},
    EntryRow{Entry::LineLength, u"lineLength", u"Length of line", u"mm"},
    EntryRow{Entry::Rotation, u"rotation", u"Rotation", u"°"},
    EntryRow{Entry::BodyWeight, u"bodyWeight", u"Body weight", u"kg"}};
inline constexpr std::size_t kEntryCount = kEntries.size();

constexpr std::size_t IndexOf(Entry id) {
  return static_cast<std::size_t>(id);
}

struct Draft {
  MarkPoints points;
  std::array<QString, kEntryCount> entries;  // by Entry, as typed
  std::optional<HipSide> side;               // as the user says; the file may say it as well

  std::vector<Landmarks::PixelPlace>& operator[](MarkKind id) { return points[IndexOf(id)]; }
  const std::vector<Landmarks::PixelPlace>& operator[](MarkKind id) const {
    return points[IndexOf(id)];
  }
  QString& operator[](Entry id) { return entries[IndexOf(id)]; }
  const QString& operator[](Entry id) const { return entries[IndexOf(id)]; }

  bool operator==(const Draft&) const = default;
};

// As JSON, and back exactly. What is missing in the JSON, or is not as it should be, is empty.
QJsonObject ToJson(const Draft& draft);
Draft DraftFrom(const QJsonObject& json);

}  // namespace Measuring
