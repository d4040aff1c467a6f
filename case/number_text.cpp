// Conversions between numbers and text.
#include "case/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "model/vocabulary.h"

namespace Vse {

namespace {

constexpr std::size_t kShortNumber = 64;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsBlank(char c) {
  return c == ' ' || ('\t' <= c && c <= '\r');
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
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

// A number beyond the range of a double: 0 when it is too small, infinite when it is too large.
double OutOfRange(std::string_view text) {
  const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
  const std::size_t leading = mantissa.find_first_of("123456789");
  if (leading == std::string_view::npos) return 0.0;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const long magnitude = static_cast<long>(point) - static_cast<long>(leading);
  return magnitude + ReadExponent(text) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

// The library alone would also take a sign, "nan" and "inf".
bool ConvertWithPoint(std::string_view text, double& value) {
  if (text.empty() || (!IsDigit(text[0]) && text[0] != '.')) return false;
  const char* const end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  if (result.ptr != end || result.ec == std::errc::invalid_argument) return false;
  if (result.ec == std::errc::result_out_of_range) value = OutOfRange(text);
  return true;
}

bool ConvertWithComma(std::string_view text, std::size_t comma, double& value) {
  if (text.size() <= kShortNumber) {
    std::array<char, kShortNumber> copy{};
    std::copy(text.begin(), text.end(), copy.begin());
    copy[comma] = '.';
    return ConvertWithPoint({copy.data(), text.size()}, value);
  }
  std::string copy(text);
  copy[comma] = '.';
  return ConvertWithPoint(copy, value);
}

// A number without sign and blanks; infinite when it is too large for a double.
bool Convert(std::string_view text, double& value) {
  const std::size_t comma = text.find(',');
  return comma == std::string_view::npos ? ConvertWithPoint(text, value)
                                         : ConvertWithComma(text, comma, value);
}

std::string_view WithoutSign(std::string_view text) {
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
  return text;
}

// Not inlined: its copies would burden every short number.
[[gnu::noinline]] std::optional<double> ReadLong(std::string_view text) {
  text = Trimmed(text);
  double size = 0.0;
  if (!Convert(WithoutSign(text), size) || size > Sila::kLargestNumber) return std::nullopt;
  return text.starts_with('-') ? 0.0 - size : size;
}

constexpr std::size_t kWord = 8;  // bytes
constexpr std::uint64_t kEveryByte = 0x0101010101010101;

std::uint64_t LoadFour(const char* text) {
  std::uint32_t word = 0;
  std::memcpy(&word, text, sizeof(word));
  return std::endian::native == std::endian::big ? __builtin_bswap32(word) : word;
}

// One to eight characters, the first one lowest, with zeros behind them.
std::uint64_t LoadShort(std::string_view text) {
  const std::size_t last = text.size() - 1;
  if (last >= 3) return LoadFour(text.data()) | LoadFour(&text[last - 3]) << (8 * (last - 3));
  const auto character = [&](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
  };
  return character(0) | character(last / 2) | character(last);
}

// The highest bit of the first separator's byte, alone; 0 without one.
std::uint64_t FindSeparator(std::uint64_t word) {
  const std::uint64_t others = (word | 2 * kEveryByte) ^ (kEveryByte * '.');  // ',' | 2 is '.'
  const std::uint64_t found = (others - kEveryByte) & ~others & (0x80 * kEveryByte);
  return found & (0 - found);
}

// Eight digits, each a byte of its own, the first one lowest.
std::uint64_t Join(std::uint64_t digits) {
  const std::uint64_t pairs = 10 * digits + (digits >> 8);
  constexpr std::uint64_t kPairs = 0x000000FF000000FF;
  constexpr std::uint64_t kFirst = 100 + (1'000'000ULL << 32);
  constexpr std::uint64_t kSecond = 1 + (10'000ULL << 32);
  return ((pairs & kPairs) * kFirst + ((pairs >> 16) & kPairs) * kSecond) >> 32;
}

// Up to eight characters: digits with at most a minus and a separator, as nearly all entries are.
// False for anything else. It has no unpredictable branch, since a table mixes all kinds.
// The digits and the power of ten are exact, so their quotient is the nearest double.
bool ReadShort(std::string_view text, double& value) {
  static constexpr std::array kPowers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
  if (text.empty() || text.size() > kWord) return false;
  const std::size_t sign = text[0] == '-' ? 1 : 0;
  const std::uint64_t word = LoadShort(text) >> (8 * sign);
  const std::size_t length = text.size() - sign;
  const std::uint64_t separator = FindSeparator(word);
  const std::size_t count = length - (separator != 0 ? 1 : 0);
  if (count == 0) return false;
  const std::uint64_t before = (separator >> 7) - 1;
  const std::uint64_t characters = (word & before) | (word >> 8 & ~before);
  const std::size_t leading = 8 * (kWord - count);
  const std::uint64_t digits = (characters ^ kEveryByte * '0') << leading;
  if (((digits | (digits + 0x76 * kEveryByte)) & 0x80 * kEveryByte) != 0) return false;
  const std::uint64_t minus = 0 - std::uint64_t{sign};  // every bit set, or none
  const auto number = static_cast<std::int64_t>((Join(digits) ^ minus) - minus);
  const std::size_t decimals =
      separator != 0 ? count - static_cast<std::size_t>(std::countr_zero(separator)) / 8 : 0;
  value = static_cast<double>(number) / kPowers[decimals];
  return true;
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
  double value = 0.0;
  return ReadShort(text, value) ? std::optional(value) : ReadLong(text);
}

bool IsTooLarge(std::string_view text) {
  double size = 0.0;
  return Convert(WithoutSign(Trimmed(text)), size) && size > Sila::kLargestNumber;
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
