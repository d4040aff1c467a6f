// Any bytes as a typed number: refused, or a finite number that its own text gives back.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "case/number_text.h"
#include "tests/fuzz/require.h"

namespace {

void CheckText(double value, const QLocale& locale) {
  const QString text = Vse::NumberText(value, locale);
  const auto back = Vse::ReadNumber(text.toStdString());
  Require(back.has_value(), "a number's text is a number");
  Require(std::abs(*back - value) <= 1e-14 * std::abs(value), "its text keeps fifteen digits");
  Require(Vse::NumberText(*back, locale) == text, "its text is the same the second time");
}

void CheckOtherSeparator(std::string text, double value) {
  const auto exchanged = [](char c) { return c == '.' ? ',' : c == ',' ? '.' : c; };
  std::transform(text.begin(), text.end(), text.begin(), exchanged);
  Require(Vse::ReadNumber(text) == value, "point and comma are the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::array locales{QLocale("C"), QLocale("de_DE"), QLocale("fa_IR")};
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto value = Vse::ReadNumber(text);
  if (!value) return 0;
  Require(std::isfinite(*value), "what is read is finite");
  CheckOtherSeparator(std::string(text), *value);
  for (const QLocale& locale : locales) CheckText(*value, locale);
  return 0;
}
