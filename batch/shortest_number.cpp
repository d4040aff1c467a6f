// std::to_chars serves doubles of every size. Between 1 and 2^50, where the results are, 128 bits
// hold the number and its neighbours exactly, which takes two thirds of the time.
#include "batch/shortest_number.h"

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

constexpr std::array<std::uint64_t, 18> kPowersOfTen = [] {
  std::array<std::uint64_t, 18> powers = {1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
  return powers;
}();

std::uint64_t PowerOfTen(int exponent) {
  return kPowersOfTen[static_cast<std::size_t>(exponent)];
}

// A number in units of 10^-decimals, rounded down.
struct Scaled {
  std::uint64_t number = 0;
  bool exact = false;      // nothing was rounded away
  std::uint64_t low = 0;   // halfway to the double below; never exact
  std::uint64_t high = 0;  // halfway to the double above; never exact
  int decimals = 0;
};

// mantissa / 2^(52 - exponent) with 18 or 19 digits; its neighbours are 22 to 223 away.
Scaled ScaleUp(std::uint64_t mantissa, int exponent) {
  const int shift = kFractionBits - exponent;
  const int decimals = 17 - ((exponent * 1233) >> 12);  // 1233 / 4096 is the logarithm of 2
  const std::uint64_t power = PowerOfTen(decimals);
  const Wide product = Wide{mantissa} * power;
  return {.number = static_cast<std::uint64_t>(product >> shift),
          .exact = (static_cast<std::uint64_t>(product) << (64 - shift)) == 0,
          .low = static_cast<std::uint64_t>((2 * product - power) >> (shift + 1)),
          .high = static_cast<std::uint64_t>((2 * product + power) >> (shift + 1)),
          .decimals = decimals};
}

// Drops as many digits as still leave a decimal between `low` and `high`, and rounds to the
// nearest; halfway between two of them the even one is taken.
std::uint64_t DropDigits(const Scaled& scaled, int& decimals) {
  std::uint64_t low = scaled.low;
  std::uint64_t high = scaled.high;
  std::uint64_t digits = scaled.number;
  std::uint64_t step = 1;
  decimals = scaled.decimals;
  do {
    low /= 10;
    high /= 10;
    digits /= 10;
    step *= 10;
    --decimals;
  } while (high / 10 > low / 10);
  const std::uint64_t rest = scaled.number - digits * step;
  const bool tie = rest == step / 2 && scaled.exact;
  const bool up = tie ? digits % 2 != 0 : rest >= step / 2;
  return up ? digits + 1 : digits;
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

// Eight digits at once: two numbers of four digits, four of two, eight of one.
void WriteEightDigits(char* out, std::uint64_t number) {
  const std::uint64_t fours = number / 10000 | (number % 10000) << 32;
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007F;  // fours / 100
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16;
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;  // twos / 10
  std::uint64_t ones = tens | (twos - 10 * tens) << 8;
  ones |= 0x3030303030303030;  // "00000000"
  if constexpr (std::endian::native == std::endian::big) ones = __builtin_bswap64(ones);
  std::memcpy(out, &ones, sizeof(ones));
}

char* WriteDecimal(char* out, const Decimal& decimal) {
  constexpr int kMostDecimals = 16;
  constexpr std::uint64_t kEightDigits = 100'000'000;
  out = std::to_chars(out, out + kNumberRoom / 2, decimal.whole).ptr;
  *out++ = '.';
  const std::uint64_t fraction = decimal.fraction * PowerOfTen(kMostDecimals - decimal.decimals);
  WriteEightDigits(out, fraction / kEightDigits);
  WriteEightDigits(out + 8, fraction % kEightDigits);
  return out + decimal.decimals;
}

}  // namespace

char* WriteShortest(char* out, double value) {
  Decimal decimal;
  if (!FindShortest(std::abs(value), decimal)) {
    return std::to_chars(out, out + kNumberRoom, value).ptr;
  }
  if (value < 0.0) *out++ = '-';
  return WriteDecimal(out, decimal);
}

}  // namespace Cohort
