// Every number has the text that std::to_chars gives it.
#include "batch/shortest_number.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace {

std::string Ours(double value) {
  std::array<char, Cohort::kNumberRoom> text{};
  return {text.data(), Cohort::WriteShortest(text.data(), value)};
}

std::string Library(double value) {
  std::array<char, 32> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

void ExpectSame(double value) {
  ASSERT_EQ(Ours(value), Library(value));
  ASSERT_EQ(Ours(-value), Library(-value));
}

void ExpectSameAround(double value) {
  ExpectSame(value);
  ExpectSame(std::nextafter(value, 0.0));
  ExpectSame(std::nextafter(value, std::numeric_limits<double>::infinity()));
}

TEST(WriteShortest, IsThatOfTheLibraryForDoublesOfEverySize) {
  std::mt19937_64 random(20261122);
  for (int i = 0; i < 500'000; ++i) {
    const double any = std::bit_cast<double>(random());
    if (std::isfinite(any)) ExpectSame(any);
  }
}

TEST(WriteShortest, IsThatOfTheLibraryForDoublesAsResultsAre) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 2'000'000; ++i) {
    const std::uint64_t exponent = 1023 - 4 + random() % 60;
    ExpectSame(std::bit_cast<double>(exponent << 52 | random() >> 12));
  }
}

TEST(WriteShortest, IsThatOfTheLibraryForShortNumbersAndTheirNeighbours) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 300'000; ++i) {
    const auto digits = static_cast<double>(random() >> (11 + random() % 53));
    ExpectSameAround(digits / std::pow(10.0, static_cast<double>(random() % 17)));
  }
}

// A number halfway between two decimals: the even one is taken.
TEST(WriteShortest, IsThatOfTheLibraryForNumbersOfFewBits) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 300'000; ++i) {
    const auto bits = static_cast<double>(random() >> (11 + random() % 53));
    ExpectSameAround(std::ldexp(bits, -static_cast<int>(random() % 60)));
  }
}

TEST(WriteShortest, IsThatOfTheLibraryAtPowersOfTwoAndOfTen) {
  for (int exponent = -320; exponent <= 308; ++exponent) {
    ExpectSameAround(std::pow(10.0, exponent));
    ExpectSameAround(std::ldexp(1.0, 3 * exponent));
  }
  for (const double value :
       {0.0, 1.0, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()}) {
    ExpectSame(value);
  }
}

}  // namespace
