// The points and what distributions make of them.
#include "uncertainty/points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

#include "uncertainty/draw.h"

namespace {

using Uncertainty::Column;
using Uncertainty::Distribution;
using Uncertainty::kBlockTrials;
using Uncertainty::Points;

// Share of the distribution below an error, which is to be the point itself again.
double ShareBelow(Distribution distribution, double error) {
  if (distribution == Distribution::Normal) return std::erfc(-error / std::sqrt(2.0)) / 2.0;
  if (distribution == Distribution::Uniform) return (error / std::sqrt(3.0) + 1.0) / 2.0;
  const double t = error / std::sqrt(6.0);
  return t < 0.0 ? (1.0 + t) * (1.0 + t) / 2.0 : 1.0 - (1.0 - t) * (1.0 - t) / 2.0;
}

Column Draw(Distribution distribution, const Uncertainty::BlockDigits& points) {
  Column errors;
  DrawErrors(distribution, 0, points, errors);
  return errors;
}

constexpr Distribution kDistributions[] = {Distribution::Normal, Distribution::Uniform,
                                           Distribution::Triangular};

double PointOf(std::uint32_t word) {
  return (word + 0.5) * 0x1p-32;
}

TEST(DrawErrors, InvertsTheDistributions) {
  for (std::uint32_t start = 0; start < 64; ++start) {
    Uncertainty::BlockDigits words;
    for (std::uint32_t k = 0; k < kBlockTrials; ++k) {
      words[k] = (start * 256 + k) * 262144U + 77U * k;
    }
    for (const Distribution distribution : kDistributions) {
      const Column errors = Draw(distribution, words);
      for (std::size_t k = 0; k < kBlockTrials; ++k) {
        ASSERT_NEAR(ShareBelow(distribution, errors.at[k]), PointOf(words[k]), 1e-9);
      }
    }
  }
}

// Into both tails, where the share changes little: there the quantile itself is compared, found by
// halving an interval of the tail's own share.
TEST(DrawErrors, IsExactInTheTails) {
  for (int bit = 0; bit < 31; ++bit) {
    const std::uint32_t word = (1U << bit) - 1U;
    Uncertainty::BlockDigits words{};
    words[0] = word;
    words[1] = ~word;
    const Column errors = Draw(Distribution::Normal, words);
    double low = -7.0;
    double high = 0.1;
    for (int i = 0; i < 100; ++i) {
      const double middle = (low + high) / 2.0;
      (ShareBelow(Distribution::Normal, middle) < PointOf(word) ? low : high) = middle;
    }
    EXPECT_NEAR(errors.at[0], low, 2e-9) << word;
    EXPECT_EQ(errors.at[1], -errors.at[0]) << word;
  }
}

TEST(DrawErrors, HasNoMeanAndUnitVariance) {
  Uncertainty::BlockDigits words;
  for (const Distribution distribution : kDistributions) {
    double sum = 0.0;
    double squares = 0.0;
    for (std::uint32_t block = 0; block < 1024; ++block) {
      for (std::uint32_t k = 0; k < kBlockTrials; ++k)
        words[k] = (block * 256U + k) * 16384U + 8192U;
      for (const double error : Draw(distribution, words).at) {
        sum += error;
        squares += error * error;
      }
    }
    EXPECT_NEAR(sum / 262144.0, 0.0, 1e-5);
    EXPECT_NEAR(squares / 262144.0, 1.0, 1e-4);
  }
}

std::vector<double> UniformPoints(const Points& points, std::size_t source, std::size_t blocks) {
  std::vector<double> all;
  Column scratch;
  for (std::size_t block = 0; block < blocks; ++block) {
    for (const double e : points.Errors(source, Distribution::Uniform, block, scratch).at) {
      all.push_back((e / std::sqrt(3.0) + 1.0) / 2.0);
    }
  }
  return all;
}

// The first 2^n points hold one in each of 2^n equal parts, in every dimension.
TEST(Points, AreEvenInEveryDimension) {
  const Points points(Uncertainty::kMaxSources, 3, 0);
  for (std::size_t source = 0; source < Uncertainty::kMaxSources; ++source) {
    std::vector<int> parts(4096);
    for (const double x : UniformPoints(points, source, 16)) {
      ++parts[static_cast<std::size_t>(x * 4096.0)];
    }
    EXPECT_EQ(std::count(parts.begin(), parts.end(), 1), 4096) << source;
  }
}

// In the plane of the first two dimensions: one in each rectangle of whatever shape.
TEST(Points, AreEvenInThePlane) {
  const Points points(2, 3, 0);
  const std::vector<double> x = UniformPoints(points, 0, 1);
  const std::vector<double> y = UniformPoints(points, 1, 1);
  for (int bits = 0; bits <= 8; ++bits) {
    std::vector<int> parts(256);
    for (std::size_t k = 0; k < 256; ++k) {
      const auto column = static_cast<std::size_t>(std::ldexp(x[k], bits));
      const auto row = static_cast<std::size_t>(std::ldexp(y[k], 8 - bits));
      ++parts[(column << (8 - bits)) | row];
    }
    EXPECT_EQ(std::count(parts.begin(), parts.end(), 1), 256) << bits;
  }
}

double Correlation(const std::vector<double>& a, const std::vector<double>& b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - 0.5) * (b[i] - 0.5);
  return 12.0 * sum / static_cast<double>(a.size());
}

TEST(Points, OfDifferentSourcesAreNotCorrelated) {
  const Points points(Uncertainty::kMaxSources, 1, 0);
  std::vector<std::vector<double>> all;
  for (std::size_t i = 0; i < Uncertainty::kMaxSources; ++i) {
    all.push_back(UniformPoints(points, i, 32));
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) EXPECT_LT(std::abs(Correlation(all[i], all[k])), 0.05);
  }
}

TEST(Points, DependOnTheSeedAlone) {
  const std::vector<double> first = UniformPoints(Points(3, 1, 0), 2, 2);
  EXPECT_EQ(first, UniformPoints(Points(3, 1, 0), 2, 2));
  EXPECT_EQ(first, UniformPoints(Points(5, 1, 0), 2, 2));
  EXPECT_NE(first, UniformPoints(Points(3, 2, 0), 2, 2));
}

TEST(Points, AreTheSameKeptOrDrawnAnew) {
  const Points kept(2, 9, 700);
  const Points drawn(2, 9, 0);
  Column one;
  Column other;
  for (std::size_t block = 0; block < 5; ++block) {
    for (const Distribution distribution : kDistributions) {
      EXPECT_EQ(kept.Errors(1, distribution, block, one).at,
                drawn.Errors(1, distribution, block, other).at);
    }
  }
}

// The sequence's second dimension as everyone's first points have it, told from the scrambled ones:
// two points differ first in the same digit, however they are scrambled.
TEST(Points, AreSobolsBelowTheirScrambling) {
  const double sobol[] = {0.0, 0.5, 0.75, 0.25, 0.625, 0.125, 0.375, 0.875};
  const std::vector<double> scrambled = UniformPoints(Points(2, 4, 0), 1, 1);
  const auto firstDigit = [](double a, double b) {
    const auto bits =
        static_cast<std::uint32_t>(a * 0x1p32) ^ static_cast<std::uint32_t>(b * 0x1p32);
    return std::countl_zero(bits);
  };
  for (std::size_t i = 0; i < 8; ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_EQ(firstDigit(scrambled[i], scrambled[k]), firstDigit(sobol[i], sobol[k]));
    }
  }
}

}  // namespace
