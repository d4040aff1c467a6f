// Every kind of vector that the program was built for, and this processor has, gives the same
// bytes.
#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "tests/uncertainty/readings.h"

namespace {

using Sila::Measurement;
using Uncertainty::Distribution;

// Lets the programs see one kind of vector alone, and all of them again at the end.
class OneTarget {
 public:
  explicit OneTarget(std::int64_t target) { Allow(target); }
  ~OneTarget() { Allow(0); }
  OneTarget(const OneTarget&) = delete;
  OneTarget& operator=(const OneTarget&) = delete;

 private:
  static void Allow(std::int64_t targets) {
    hwy::SetSupportedTargetsForTest(targets);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
};

void Append(double number, std::string& bytes) {
  char raw[sizeof number];
  std::memcpy(raw, &number, sizeof number);
  bytes.append(raw, sizeof number);
}

void Append(const Uncertainty::HipUncertainty& hip, std::string& bytes) {
  Append(static_cast<double>(hip.ok), bytes);
  Append(static_cast<double>(hip.trials), bytes);
  for (const auto& result : hip.results) {
    if (!result) continue;
    if (result->spread.u) Append(*result->spread.u, bytes);
    if (result->spread.interval) Append(result->spread.interval->low, bytes);
    if (result->spread.interval) Append(result->spread.interval->high, bytes);
    for (const double part : result->spread.budget) Append(part, bytes);
  }
}

// Hips of all kinds with all distributions, a number of trials that ends within a vector, and an
// automatic one; some near the edge of what the model covers.
std::string ComputeAll() {
  const Uncertainty::Points points(Uncertainty::kReadingSources, 17, 1000);
  RandomHips random(51);
  std::string bytes;
  for (int i = 0; i < 60; ++i) {
    Sila::HipInputs hip = i % 2 == 0 ? random.Usual() : random.Wide();
    if (i % 5 == 0) hip.thetaCE = {random.Uniform(-0.2, 0.1)};
    Uncertainty::HipReading reading = MagnifiedReading(hip, 1.1, i % 3 == 0 ? 0.0 : 0.02);
    reading.errors[static_cast<std::size_t>(i % 9)].distribution = Distribution::Uniform;
    reading.errors[static_cast<std::size_t>((i + 4) % 9)].distribution = Distribution::Triangular;
    if (i % 7 == 0) ErrorOf(reading, Measurement::Zasuk).u = 3.0;
    const Uncertainty::Settings settings = {
        .trials = i % 4 == 0 ? 16384U : 2747U, .automatic = i % 4 == 0, .budget = true};
    Append(ComputeHipUncertainty(reading, points, settings), bytes);
  }
  return bytes;
}

TEST(Targets, GiveTheSameBytes) {
  const std::string best = ComputeAll();
  const std::int64_t targets = hwy::SupportedTargets() & HWY_TARGETS;
  int compared = 0;
  for (std::int64_t rest = targets; rest != 0; rest &= rest - 1) {
    const std::int64_t target = rest & -rest;
    const OneTarget only(target);
    EXPECT_TRUE(ComputeAll() == best) << hwy::TargetName(target);
    ++compared;
  }
  EXPECT_GE(compared, 2);
}

}  // namespace
