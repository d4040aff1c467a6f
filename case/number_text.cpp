// Conversions between numbers and text.
#include "case/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "model/vocabulary.h"

namespace Vse {

namespace {

constexpr std::size_t kShortNumber = 64;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\n\v\f\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::size_t CountDigits(std::string_view text) {
  const auto* end = std::find_if_not(text.begin(), text.end(), IsDigit);
  return static_cast<std::size_t>(end - text.begin());
}

// Digits with at most one separator; the number of characters that they take, 0 for none.
std::size_t MatchMantissa(std::string_view text) {
  const std::size_t before = CountDigits(text);
  if (before == text.size() || (text[before] != '.' && text[before] != ',')) return before;
  const std::size_t after = CountDigits(text.substr(before + 1));
  return before + after > 0 ? before + 1 + after : 0;
}

bool IsExponent(std::string_view text) {
  if (text.empty()) return true;
  if (text[0] != 'e' && text[0] != 'E') return false;
  text.remove_prefix(1);
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
  return !text.empty() && CountDigits(text) == text.size();
}

// The exponent as an integer, kept within ±1e9; more leaves the range of a double all the same.
long ReadExponent(std::string_view text) {
  const std::size_t mark = text.find_first_of("eE");
  if (mark == std::string_view::npos) return 0;
  text.remove_prefix(mark + 1);
  const bool negative = text[0] == '-';
  if (!IsDigit(text[0])) text.remove_prefix(1);
  constexpr long kFarOut = 1'000'000'000;
  long exponent = 0;
  for (const char digit : text) exponent = std::min(kFarOut, 10 * exponent + (digit - '0'));
  return negative ? -exponent : exponent;
}

// A number beyond the range of a double: 0 when it is too small, empty when it is too large.
std::optional<double> OutOfRange(std::string_view text) {
  const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
  const std::size_t leading = mantissa.find_first_of("123456789");
  if (leading == std::string_view::npos) return 0.0;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const long magnitude = static_cast<long>(point) - static_cast<long>(leading);
  if (magnitude + ReadExponent(text) > 0) return std::nullopt;
  return 0.0;
}

std::optional<double> Convert(std::string_view text) {
  double value = 0.0;
  const std::from_chars_result result =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range) return OutOfRange(text);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return value <= Sila::kLargestNumber ? std::optional(value) : std::nullopt;
}

std::optional<double> ConvertWithPoint(std::string_view text, std::size_t comma) {
  if (text.size() <= kShortNumber) {
    std::array<char, kShortNumber> copy{};
    std::copy(text.begin(), text.end(), copy.begin());
    copy[comma] = '.';
    return Convert({copy.data(), text.size()});
  }
  std::string copy(text);
  copy[comma] = '.';
  return Convert(copy);
}

std::string_view WithoutSign(std::string_view text) {
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
  return text;
}

// Whether a text without sign is spelt like a number; `mantissa` becomes the number of characters
// before its exponent.
bool IsSpeltAsNumber(std::string_view text, std::size_t& mantissa) {
  mantissa = MatchMantissa(text);
  return mantissa > 0 && IsExponent(text.substr(mantissa));
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
  text = Trimmed(text);
  const bool negative = !text.empty() && text[0] == '-';
  text = WithoutSign(text);
  std::size_t mantissa = 0;
  if (!IsSpeltAsNumber(text, mantissa)) return std::nullopt;
  const std::size_t comma = text.substr(0, mantissa).find(',');
  const std::optional<double> value =
      comma == std::string_view::npos ? Convert(text) : ConvertWithPoint(text, comma);
  if (!value) return std::nullopt;
  return negative ? 0.0 - *value : *value;
}

bool IsTooLarge(std::string_view text) {
  std::size_t mantissa = 0;
  return IsSpeltAsNumber(WithoutSign(Trimmed(text)), mantissa) && !ReadNumber(text);
}

double TruncateToDecimals(double value, int decimals) {
  const double power = std::pow(10.0, decimals);
  return std::floor(value * power) / power;
}

QString NumberText(double value, const QLocale& locale) {
  constexpr int kSignificantDigits = 15;
  std::array<char, 32> digits{};
  const double withoutMinusZero = value == 0.0 ? 0.0 : value;
  const std::to_chars_result end =
      std::to_chars(digits.data(), digits.data() + digits.size(), withoutMinusZero,
                    std::chars_format::general, kSignificantDigits);
  QString text = QString::fromLatin1(digits.data(), end.ptr - digits.data());
  if (!std::isfinite(value)) return text;
  // A separator that could not be read back (the Arabic one, say) gives way to the comma.
  const QString point =
      locale.decimalPoint() == QLatin1String(".") ? QStringLiteral(".") : QStringLiteral(",");
  return text.toUpper().replace(QLatin1Char('.'), point);
}

}  // namespace Vse
