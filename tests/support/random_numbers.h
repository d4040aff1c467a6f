// Random numbers that are the same on every machine: the standard library's distributions are not.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : random_(seed) {}

  double Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(random_() >> 11) * 0x1p-53);
  }

  // Box and Muller's method, both of its numbers.
  double Normal(double mean, double deviation) {
    if (hasSpare_) {
      hasSpare_ = false;
      return mean + deviation * spare_;
    }
    const double length = std::sqrt(-2.0 * std::log(1.0 - Uniform(0.0, 1.0)));
    const double angle = Uniform(0.0, 2.0 * std::numbers::pi);
    spare_ = length * std::sin(angle);
    hasSpare_ = true;
    return mean + deviation * length * std::cos(angle);
  }

 private:
  std::mt19937_64 random_;
  double spare_ = 0.0;
  bool hasSpare_ = false;
};
