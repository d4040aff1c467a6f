#include "measuring/error_entries.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "case/number_text.h"

namespace Measuring {

bool CheckedErrors::IsGood() const {
  return std::none_of(isWrong.begin(), isWrong.end(), std::identity());
}

CheckedErrors CheckErrors(const ErrorTexts& texts) {
  CheckedErrors checked;
  for (std::size_t i = 0; i < kErrorCount; ++i) {
    if (texts[i].trimmed().isEmpty()) continue;
    const std::optional<double> u = Vse::ReadNumber(texts[i].toStdString());
    checked.isWrong[i] = !u || *u < 0.0;
    checked.u[i] = checked.isWrong[i] ? 0.0 : *u;
    checked.isAnyGiven = true;
  }
  return checked;
}

QJsonObject ToJson(const ErrorTexts& texts) {
  QJsonObject json;
  for (const ErrorRow& row : kErrors) {
    const QString& text = texts[IndexOf(row.id)];
    if (!text.isEmpty()) json[row.key.toString()] = text;
  }
  return json;
}

ErrorTexts ErrorTextsFrom(const QJsonObject& json) {
  ErrorTexts texts;
  for (const ErrorRow& row : kErrors) {
    texts[IndexOf(row.id)] = json[row.key.toString()].toString();
  }
  return texts;
}

}  // namespace Measuring
