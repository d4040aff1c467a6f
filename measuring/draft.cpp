#include "measuring/draft.h"

#include <QJsonArray>

namespace Measuring {

namespace {

using Landmarks::PixelPlace;

QString Text(QStringView text) {
  return text.toString();
}

QJsonArray ToJson(const std::vector<PixelPlace>& points) {
  QJsonArray array;
  for (const PixelPlace& place : points) array.append(QJsonArray{place.column, place.row});
  return array;
}

std::vector<PixelPlace> PointsFrom(const QJsonArray& array, std::size_t most) {
  std::vector<PixelPlace> points;
  for (const auto& value : array) {
    const QJsonArray place = value.toArray();
    if (place.size() != 2 || !place[0].isDouble() || !place[1].isDouble()) continue;
    if (points.size() < most) points.push_back({place[0].toDouble(), place[1].toDouble()});
  }
  return points;
}

constexpr QLatin1String kSide("side");
constexpr QLatin1String kLeft("left");
constexpr QLatin1String kRight("right");

}  // namespace

QJsonObject ToJson(const Draft& draft) {
  QJsonObject json;
  for (const MarkRow& row : kMarks) {
    if (!draft[row.id].empty()) json[Text(row.key)] = ToJson(draft[row.id]);
  }
  for (const EntryRow& row : kEntries) {
    if (!draft[row.id].isEmpty()) json[Text(row.key)] = draft[row.id];
  }
  if (draft.side) json[kSide] = *draft.side == HipSide::Left ? kLeft : kRight;
  return json;
}

Draft DraftFrom(const QJsonObject& json) {
  Draft draft;
  for (const MarkRow& row : kMarks) {
    draft[row.id] = PointsFrom(json[Text(row.key)].toArray(), row.most());
  }
  for (const EntryRow& row : kEntries) draft[row.id] = json[Text(row.key)].toString();
  if (json[kSide] == kLeft) draft.side = HipSide::Left;
  if (json[kSide] == kRight) draft.side = HipSide::Right;
  return draft;
}

}  // namespace Measuring
