// Intervals by a pilot that tells where their ends will lie, then by counting.
#include "uncertainty/propagate.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

#include "uncertainty/budget.h"
#include "uncertainty/tally.h"
#include "uncertainty/trials.h"

namespace Uncertainty {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kPilotTrials = 1024;
constexpr std::ptrdiff_t kPilotMargin = 16;  // ranks of the pilot on either side of an end
constexpr std::size_t kFirstTrials = 2048;   // of an automatic run
constexpr double kStable = 0.01;             // of an interval's width
// Doublings in a row that leave the ends stable. One alone often happens by chance: both halves of
// its points can miss an end by the same amount.
constexpr int kStableDoublings = 2;

struct Ranks {
  std::size_t low = 0;
  std::size_t high = 0;
};

// JCGM 101, 7.7.2.
Ranks RanksOfEnds(std::size_t trials, double coverage) {
  const auto covered =
      static_cast<std::size_t>(std::floor(coverage * static_cast<double>(trials) + 0.5));
  const std::size_t low = (trials - covered + 1) / 2;
  return {std::max<std::size_t>(low, 1), std::clamp<std::size_t>(low + covered, 1, trials)};
}

// Everything that is kept of one result. At first its ends may be anywhere.
struct Tally {
  Sums sums;
  Tail low = Tail(Tail::Side::Lower, -kInfinity, kInfinity);
  Tail high = Tail(Tail::Side::Upper, kInfinity, -kInfinity);
};

double Ranked(std::vector<double>& values, std::ptrdiff_t rank) {
  if (rank < 1) return -kInfinity;
  if (rank > std::ssize(values)) return kInfinity;
  const auto found = values.begin() + rank - 1;
  std::nth_element(values.begin(), found, values.end());
  return *found;
}

// Expects the ends about where they are among the values of a pilot.
void ExpectEnds(std::vector<double>& values, double coverage, Tally& tally) {
  const Ranks ranks = RanksOfEnds(values.size(), coverage);
  const auto low = static_cast<std::ptrdiff_t>(ranks.low);
  const auto high = static_cast<std::ptrdiff_t>(ranks.high);
  tally.low = Tail(Tail::Side::Lower, Ranked(values, low - kPilotMargin),
                   Ranked(values, low + kPilotMargin));
  tally.high = Tail(Tail::Side::Upper, Ranked(values, high + kPilotMargin),
                    Ranked(values, high - kPilotMargin));
}

// One propagation while it goes on.
class Propagation {
 public:
  Propagation(Trials& trials, double coverage) : trials_(trials), coverage_(coverage) {
    for (const Sums& sums : SumsAboutCentre(trials.RunCentre())) tallies_.push_back({.sums = sums});
  }

  // The first trials, which are spread as evenly as all of them, show where the ends will lie.
  void RunPilot() {
    std::vector<std::vector<Column>> blocks;
    for (std::size_t block = 0; block < kPilotTrials / kBlockTrials; ++block) {
      const std::span<const Column> results = trials_.Run(block, kBlockTrials);
      blocks.emplace_back(results.begin(), results.end());
    }
    for (std::size_t i = 0; i < tallies_.size(); ++i) {
      std::vector<double> values;
      for (const std::vector<Column>& block : blocks) {
        values.insert(values.end(), block[i].at.begin(), block[i].at.end());
      }
      ExpectEnds(values, coverage_, tallies_[i]);
    }
    for (std::vector<Column>& block : blocks) Add(block, kBlockTrials);
  }

  // Goes on to so many trials in all. Only the last time may they end within a block.
  void RunTo(std::size_t count) {
    while (done_ < count) {
      const std::size_t trials = std::min(count - done_, kBlockTrials);
      Add(trials_.Run(done_ / kBlockTrials, trials), trials);
    }
  }

  Completeness WhatIsLeft() const {
    if (ok_ == done_) return Completeness::Complete;
    const double refused = static_cast<double>(done_ - ok_);
    const bool few = refused <= kRefusedShare * static_cast<double>(done_);
    return few && RanksOfEnds(done_, coverage_).high <= ok_ ? Completeness::SomeRefused
                                                            : Completeness::TooManyRefused;
  }

  // The ends so far, of each result.
  std::vector<Interval> FindIntervals() {
    const Ranks ranks = RanksOfEnds(done_, coverage_);
    std::vector<Interval> intervals(tallies_.size());
    for (std::size_t i = 0; i < tallies_.size(); ++i) {
      intervals[i] = {FindEnd(i, tallies_[i].low, ranks.low),
                      FindEnd(i, tallies_[i].high, done_ + 1 - ranks.high)};
    }
    return intervals;
  }

  double Variance(std::size_t result) const { return tallies_[result].sums.Variance(done_); }
  std::size_t done() const { return done_; }
  std::size_t ok() const { return ok_; }

 private:
  void Add(std::span<Column> results, std::size_t trials) {
    const auto first = results[0].at.begin();
    const auto refused = std::count(first, first + static_cast<std::ptrdiff_t>(trials), kRefused);
    done_ += trials;
    ok_ += trials - static_cast<std::size_t>(refused);
    for (std::size_t i = 0; i < tallies_.size(); ++i) {
      tallies_[i].sums.Add(results[i], trials);
      tallies_[i].low.Add(results[i], trials);
      tallies_[i].high.Add(results[i], trials);
    }
  }

  // Where the pilot was misled, all trials are run once more with the tail opened to the side on
  // which the end was missed.
  double FindEnd(std::size_t result, Tail& tail, std::size_t rank) {
    std::optional<double> end = tail.Ranked(rank);
    while (!end) {
      tail.Widen(rank);
      for (std::size_t from = 0; from < done_; from += kBlockTrials) {
        const std::size_t trials = std::min(done_ - from, kBlockTrials);
        tail.Add(trials_.Run(from / kBlockTrials, trials)[result], trials);
      }
      end = tail.Ranked(rank);
    }
    return *end;
  }

  Trials& trials_;
  double coverage_ = 0.0;
  std::vector<Tally> tallies_;
  std::size_t done_ = 0;
  std::size_t ok_ = 0;
};

bool IsStable(const Interval& before, const Interval& now) {
  const double allowed = kStable * (now.high - now.low);
  return std::abs(now.low - before.low) <= allowed && std::abs(now.high - before.high) <= allowed;
}

// Runs all trials; false when an automatic run ended before the ends were stable.
bool RunAll(Propagation& propagation, const Settings& settings) {
  if (!settings.automatic) {
    propagation.RunTo(settings.trials);
    return true;
  }
  std::vector<Interval> before;
  int stable = 0;
  for (std::size_t count = std::min(kFirstTrials, settings.trials);;) {
    propagation.RunTo(count);
    std::vector<Interval> now;
    const bool none = propagation.WhatIsLeft() == Completeness::TooManyRefused;
    if (!none) now = propagation.FindIntervals();
    const bool comparable = count > kFirstTrials && before.size() == now.size();
    const bool moved =
        !comparable || !std::equal(before.begin(), before.end(), now.begin(), IsStable);
    stable = moved ? 0 : stable + 1;
    if (stable == kStableDoublings) return true;
    if (count >= settings.trials) return false;
    before = std::move(now);
    count = std::min(2 * count, settings.trials);
  }
}

// What the trials say of one result.
Spread SpreadOf(const Interval& interval, double variance, Completeness completeness) {
  Spread spread;
  spread.interval = interval;
  if (completeness == Completeness::Complete) spread.u = std::sqrt(variance);
  return spread;
}

}  // namespace

Propagated Propagate(std::span<const Source> sources, const BlockModel& model,
                     std::size_t resultCount, const Points& points, const Settings& settings) {
  assert(settings.trials >= 1 && settings.trials <= kMaxTrials);
  assert(settings.coverage > 0.0 && settings.coverage < 1.0);
  Trials trials(sources, model, resultCount, points);
  Propagation propagation(trials, settings.coverage);
  if (settings.trials > kPilotTrials) propagation.RunPilot();

  Propagated propagated;
  propagated.settled = RunAll(propagation, settings);
  propagated.trials = propagation.done();
  propagated.ok = propagation.ok();
  propagated.completeness = propagation.WhatIsLeft();
  propagated.results.resize(resultCount);
  if (propagated.completeness == Completeness::TooManyRefused) return propagated;
  const std::vector<Interval> intervals = propagation.FindIntervals();
  for (std::size_t i = 0; i < resultCount; ++i) {
    propagated.results[i] =
        SpreadOf(intervals[i], propagation.Variance(i), propagated.completeness);
  }
  if (!settings.budget || propagated.completeness != Completeness::Complete) return propagated;
  std::vector<std::vector<double>> budget = ComputeBudget(trials, settings.parts);
  for (std::size_t i = 0; i < budget.size(); ++i) {
    propagated.results[i].budget = std::move(budget[i]);
  }
  return propagated;
}

}  // namespace Uncertainty
