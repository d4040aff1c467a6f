// std::to_chars serves doubles of every size. Between 1 and 2^50, where the results are, 128 bits
// hold the number and its neighbours exactly, which takes less than half of the time.
#include "batch/shortest_number.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Cohort {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int kFractionBits = 52;  // of a double
constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << kFractionBits;
constexpr int kLargestExponent = 49;

constexpr std::array<std::uint64_t, 19> kPowersOfTen = [] {
  std::array<std::uint64_t, 19> powers = {1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
  return powers;
}();

std::uint64_t PowerOfTen(int exponent) {
  return kPowersOfTen[static_cast<std::size_t>(exponent)];
}

// What brings the doubles of one binary exponent to 16 or 17 digits before the point: 10^decimals,
// times such a power of two that with a mantissa of 64 bits the point is between two words.
struct Scale {
  std::uint64_t power = 0;
  int decimals = 0;
};
constexpr std::array<Scale, kLargestExponent + 1> kScales = [] {
  std::array<Scale, kLargestExponent + 1> scales = {};
  for (int exponent = 0; exponent <= kLargestExponent; ++exponent) {
    const int decimals = 16 - ((exponent * 1233) >> 12);  // 1233 / 4096 is the logarithm of 2
    const auto power = kPowersOfTen[static_cast<std::size_t>(decimals)] << (exponent + 1);
    scales[static_cast<std::size_t>(exponent)] = {power, decimals};
  }
  return scales;
}();

// A number in units of 10^-decimals, rounded down.
struct Scaled {
  std::uint64_t number = 0;
  std::uint64_t rest = 0;  // what was rounded away, in units of 2^-64
  std::uint64_t low = 0;   // halfway to the double below; never exact
  std::uint64_t high = 0;  // halfway to the double above; never exact
  int decimals = 0;
};

// mantissa / 2^(52 - exponent); its neighbours are 2 to 23 away.
Scaled ScaleUp(std::uint64_t mantissa, int exponent) {
  constexpr int kSpareBits = 64 - 1 - kFractionBits;
  const Scale& scale = kScales[static_cast<std::size_t>(exponent)];
  const Wide product = Wide{mantissa << kSpareBits} * scale.power;
  const Wide half = Wide{scale.power} << (kSpareBits - 1);
  return {.number = static_cast<std::uint64_t>(product >> 64),
          .rest = static_cast<std::uint64_t>(product),
          .low = static_cast<std::uint64_t>((product - half) >> 64),
          .high = static_cast<std::uint64_t>((product + half) >> 64),
          .decimals = scale.decimals};
}

// Whether a decimal with this many digits fewer lies between `low` and `high`.
template <int digits>
bool MayDrop(const Scaled& scaled) {
  return scaled.high / kPowersOfTen[digits] > scaled.low / kPowersOfTen[digits];
}

// How many digits may go for a decimal to be left between `low` and `high`; more than two are
// seldom.
int CountDroppedDigits(const Scaled& scaled) {
  if (!MayDrop<3>(scaled)) return (MayDrop<1>(scaled) ? 1 : 0) + (MayDrop<2>(scaled) ? 1 : 0);
  int dropped = 3;
  while (scaled.high / PowerOfTen(dropped + 1) > scaled.low / PowerOfTen(dropped + 1)) ++dropped;
  return dropped;
}

// Without a division by what is not known beforehand, which costs as much as all the rest.
std::uint64_t WithoutLastDigits(std::uint64_t number, int count) {
  const std::array fewer = {number, number / 10, number / 100};
  if (count < 3) return fewer[static_cast<std::size_t>(count)];
  return number / PowerOfTen(count);
}

// Drops as many digits as still leave a decimal between `low` and `high`, and rounds to the
// nearest; halfway between two of them the even one is taken.
std::uint64_t DropDigits(const Scaled& scaled, int& decimals) {
  const int dropped = CountDroppedDigits(scaled);
  decimals = scaled.decimals - dropped;
  const std::uint64_t step = PowerOfTen(dropped);
  const std::uint64_t digits = WithoutLastDigits(scaled.number, dropped);
  const std::uint64_t twice = 2 * (scaled.number - digits * step) + (scaled.rest >> 63);
  const std::uint64_t more = scaled.rest << 1 != 0 ? 1 : digits & 1;  // than half
  return digits + (twice + more > step ? 1 : 0);
}

// whole + fraction / 10^decimals
struct Decimal {
  std::uint64_t whole = 0;
  std::uint64_t fraction = 0;
  int decimals = 0;
};

// The decimal with the fewest digits among those that read back to `value`, and of these the
// nearest. False for what this way does not serve: other sizes, and numbers that come out whole.
bool FindShortest(double value, Decimal& decimal) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int exponent = static_cast<int>(bits >> kFractionBits) - 1023;
  const std::uint64_t mantissa = (bits & (kHiddenBit - 1)) | kHiddenBit;
  // The neighbours of a power of two are not equally far away.
  if (exponent < 0 || exponent > kLargestExponent || mantissa == kHiddenBit) return false;
  const std::uint64_t digits = DropDigits(ScaleUp(mantissa, exponent), decimal.decimals);
  if (decimal.decimals <= 0) return false;
  decimal.whole = mantissa >> (kFractionBits - exponent);
  decimal.fraction = digits - decimal.whole * PowerOfTen(decimal.decimals);
  return true;
}

// A number's eight digits at once, the first one in the lowest byte: two numbers of four digits,
// four of two, eight of one.
std::uint64_t EightDigits(std::uint64_t number) {
  const std::uint64_t fours = number / 10000 | (number % 10000) << 32;
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007F;  // fours / 100
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16;
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;  // twos / 10
  return tens | (twos - 10 * tens) << 8;
}

// Eight characters, whose last ones may be without meaning.
void WriteEight(char* out, std::uint64_t digits) {
  std::uint64_t text = digits | 0x3030303030303030;  // "00000000"
  if constexpr (std::endian::native == std::endian::big) text = __builtin_bswap64(text);
  std::memcpy(out, &text, sizeof(text));
}

constexpr std::uint64_t kEightDigits = 100'000'000;

char* WriteWhole(char* out, std::uint64_t whole) {
  if (whole >= kEightDigits) return std::to_chars(out, out + kNumberRoom / 2, whole).ptr;
  const std::uint64_t digits = EightDigits(whole);
  constexpr std::uint64_t kLastDigit = std::uint64_t{1} << 56;  // of a 0 is left
  const int zeros = std::countr_zero(digits | kLastDigit) / 8;
  WriteEight(out, digits >> (8 * zeros));
  return out + 8 - zeros;
}

char* WriteDecimal(char* out, const Decimal& decimal) {
  constexpr int kMostDecimals = 16;
  out = WriteWhole(out, decimal.whole);
  *out++ = '.';
  const std::uint64_t fraction = decimal.fraction * PowerOfTen(kMostDecimals - decimal.decimals);
  WriteEight(out, EightDigits(fraction / kEightDigits));
  WriteEight(out + 8, EightDigits(fraction % kEightDigits));
  return out + decimal.decimals;
}

}  // namespace

char* WriteShortest(char* out, double value) {
  Decimal decimal;
  if (!FindShortest(std::abs(value), decimal)) {
    return std::to_chars(out, out + kNumberRoom, value).ptr;
  }
  *out = '-';
  return WriteDecimal(out + (value < 0.0 ? 1 : 0), decimal);
}

}  // namespace Cohort
