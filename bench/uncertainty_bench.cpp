// Reading errors carried through the model: trials a second for each kind of vector that this
// processor has, and how near the ends of the intervals come to those of ten million trials, with
// the points that are used and with random ones. Times are of the processor, the best of many runs.
#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <vector>

#include "tests/uncertainty/readings.h"
#include "uncertainty/hip_block.h"

namespace {

using Uncertainty::Column;
using Uncertainty::HipReading;
using Uncertainty::HipUncertainty;
using Uncertainty::kBlockTrials;
using Uncertainty::Points;
using Uncertainty::Settings;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr int kHips = 50;
constexpr int kRuns = 40;
constexpr std::size_t kReferenceTrials = 10'000'000;

using Intervals = std::array<Uncertainty::Interval, Sila::kResultCount>;

double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <class Work>
double BestSeconds(Work work) {
  double best = 1e9;
  for (int run = 0; run < kRuns; ++run) {
    const double start = ProcessorSeconds();
    work();
    best = std::min(best, ProcessorSeconds() - start);
  }
  return best;
}

// As patients have them, on pictures that magnify.
std::vector<HipReading> OrdinaryHips() {
  RandomHips random(7);
  std::vector<HipReading> readings;
  for (int i = 0; i < kHips; ++i) {
    Sila::HipInputs hip = random.Usual();
    hip.thetaCE = {random.Uniform(20.0, 45.0) * Sila::kPi / 180.0};
    readings.push_back(MagnifiedReading(hip, random.Uniform(1.05, 1.25), 0.03));
  }
  return readings;
}

void SeeOnly(std::int64_t target) {
  hwy::SetSupportedTargetsForTest(target);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

void PrintRates(const std::vector<HipReading>& hips) {
  const Points kept(Uncertainty::kReadingSources);
  const Points anew(Uncertainty::kReadingSources, 1, 0);
  const Settings settings;
  const double trials = static_cast<double>(settings.trials);
  std::printf("All five results of a hip with errors of all ten readings, %zu trials, one core:\n",
              settings.trials);
  std::printf("%-8s %22s %28s %12s\n", "vectors", "points kept", "points drawn for each hip",
              "with budget");
  for (std::int64_t rest = hwy::SupportedTargets() & HWY_TARGETS; rest != 0; rest &= rest - 1) {
    SeeOnly(rest & -rest);
    const auto time = [&](const Points& points, bool budget) {
      Settings asked = settings;
      asked.budget = budget;
      return BestSeconds([&] { ComputeHipUncertainty(hips[0], points, asked); });
    };
    const double first = time(kept, false);
    const double second = time(anew, false);
    std::printf("%-8s %7.3f ms %6.2f M/s %15.3f ms %6.2f M/s %9.3f ms\n",
                hwy::TargetName(rest & -rest), first * 1e3, trials / first / 1e6, second * 1e3,
                trials / second / 1e6, time(kept, true) * 1e3);
    SeeOnly(0);
  }
}

Intervals IntervalsOf(const HipUncertainty& hip) {
  Intervals intervals;
  for (std::size_t i = 0; i < Sila::kResultCount; ++i)
    intervals[i] = *hip.results[i]->spread.interval;
  return intervals;
}

// The same from independent random points, every result kept and sorted.
Intervals RandomIntervals(const HipReading& reading, std::size_t trials, std::mt19937_64& random) {
  std::normal_distribution<double> normal;
  std::vector<Column> in(Sila::kMeasurementCount);
  std::vector<Column> out(Sila::kResultCount);
  std::array<std::vector<double>, Sila::kResultCount> values;
  Uncertainty::HipColumns columns{};
  for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) columns[i] = &in[i];
  for (std::size_t from = 0; from < trials; from += kBlockTrials) {
    for (std::size_t k = 0; k < kBlockTrials; ++k) {
      const double factor =
          reading.magnification->value + reading.magnification->u * normal(random);
      for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
        const std::size_t i = IndexOf(row.id);
        const double drawn = ValueOf(reading.values, row) + reading.errors[i].u * normal(random);
        in[i].at[k] = Uncertainty::IsLength(row) ? drawn / factor : drawn;
      }
    }
    ComputeHips(columns, kBlockTrials, std::span<Column, Sila::kResultCount>(out));
    for (std::size_t i = 0; i < Sila::kResultCount; ++i) {
      values[i].insert(values[i].end(), out[i].at.begin(), out[i].at.end());
    }
  }
  Intervals intervals;
  for (std::size_t i = 0; i < Sila::kResultCount; ++i) {
    std::sort(values[i].begin(), values[i].end());
    intervals[i] = {values[i][trials / 40], values[i][trials - 1 - trials / 40]};
  }
  return intervals;
}

// The 95th percentile over hips of the worst end's error, as a share of the interval's width.
template <class Compute>
void PrintErrors(const char* name, const std::vector<HipReading>& hips,
                 const std::vector<Intervals>& references, Compute compute) {
  std::vector<double> errors;
  for (std::size_t h = 0; h < hips.size(); ++h) {
    const Intervals got = compute(hips[h]);
    double worst = 0.0;
    for (std::size_t i = 0; i < Sila::kResultCount; ++i) {
      const Uncertainty::Interval& exact = references[h][i];
      const double width = exact.high - exact.low;
      worst = std::max({worst, std::abs(got[i].low - exact.low) / width,
                        std::abs(got[i].high - exact.high) / width});
    }
    errors.push_back(100.0 * worst);
  }
  std::sort(errors.begin(), errors.end());
  std::printf("%-28s median %.2f %%, 95th percentile %.2f %%, worst %.2f %%\n", name,
              errors[errors.size() / 2], errors[errors.size() * 95 / 100], errors.back());
}

void PrintAccuracy(const std::vector<HipReading>& hips) {
  const Points other(Uncertainty::kReadingSources, 99, 0);
  std::vector<Intervals> references;
  for (const HipReading& hip : hips) {
    references.push_back(
        IntervalsOf(ComputeHipUncertainty(hip, other, {.trials = kReferenceTrials})));
  }
  std::printf(
      "\nEnds of the intervals of %d hips against %zu trials, all results, worst end, in\n"
      "shares of the width:\n",
      kHips, kReferenceTrials);
  const Points points(Uncertainty::kReadingSources);
  for (const std::size_t trials : {2048U, 4096U, 8192U, 16384U}) {
    char name[64];
    std::snprintf(name, sizeof name, "%zu Sobol points", trials);
    PrintErrors(name, hips, references, [&](const HipReading& hip) {
      return IntervalsOf(ComputeHipUncertainty(hip, points, {.trials = trials}));
    });
  }
  std::mt19937_64 random(5);
  for (const std::size_t trials : {8192U, 32768U, 131072U}) {
    char name[64];
    std::snprintf(name, sizeof name, "%zu random points", trials);
    PrintErrors(name, hips, references,
                [&](const HipReading& hip) { return RandomIntervals(hip, trials, random); });
  }
  std::size_t used = 0;
  PrintErrors("automatic", hips, references, [&](const HipReading& hip) {
    const HipUncertainty got =
        ComputeHipUncertainty(hip, points, {.trials = 1U << 20, .automatic = true});
    used += got.trials;
    return IntervalsOf(got);
  });
  std::printf("automatic runs took %zu trials on average\n", used / kHips);
}

// For comparison with other programs: hips from the standard input, each as value, u and
// distribution (0 normal, 1 uniform, 2 triangular) of the nine inputs and the magnification; to the
// standard output trials, trials with an answer, the five results with the ends of their intervals,
// and the parts of the sources in the peak stress.
void AnswerTable(std::size_t trials) {
  const Points points(Uncertainty::kReadingSources, 1, trials);
  std::array<Uncertainty::Source, Uncertainty::kReadingSources> sources;
  const auto read = [&] {
    for (Uncertainty::Source& source : sources) {
      int distribution = 0;
      if (std::scanf("%lf %lf %d", &source.value, &source.u, &distribution) != 3) return false;
      source.distribution = static_cast<Uncertainty::Distribution>(distribution);
    }
    return true;
  };
  while (read()) {
    HipReading reading;
    for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
      const Uncertainty::Source& source = sources[IndexOf(row.id)];
      SetValue(reading.values, row, source.value);
      reading.errors[IndexOf(row.id)] = {source.u, source.distribution};
    }
    reading.magnification = sources.back();
    const HipUncertainty hip =
        ComputeHipUncertainty(reading, points, {.trials = trials, .budget = true});
    std::printf("%zu %zu", hip.trials, hip.ok);
    for (const auto& result : hip.results) {
      const bool given = result && result->spread.interval;
      std::printf(" %.17g %.17g %.17g", result ? result->estimate : kNone,
                  given ? result->spread.interval->low : kNone,
                  given ? result->spread.interval->high : kNone);
    }
    const auto& pmax = hip.results[IndexOf(Sila::Result::Pmax)];
    const bool shared = pmax && !pmax->spread.budget.empty();
    for (std::size_t i = 0; i < Uncertainty::kReadingSources; ++i) {
      std::printf(" %.6g", shared ? pmax->spread.budget[i] : kNone);
    }
    std::printf("\n");
  }
}

}  // namespace

// With a number as argument, so many trials for each hip of the standard input.
int main(int argc, char** argv) {
  if (argc == 2) {
    AnswerTable(std::strtoul(argv[1], nullptr, 10));
    return 0;
  }
  const std::vector<HipReading> hips = OrdinaryHips();
  PrintRates(hips);
  PrintAccuracy(hips);
  return 0;
}
