// Trials by the block; intervals by a pilot that tells where their ends will lie, then by counting.
#include "uncertainty/propagate.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>

#include "uncertainty/tally.h"

namespace Uncertainty {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kPilotTrials = 1024;
constexpr std::size_t kPilotMargin = 16;     // ranks of the pilot on either side of an end
constexpr std::size_t kFirstTrials = 2048;   // of an automatic run
constexpr std::size_t kBudgetTrials = 1024;  // one source alone, evenly spread: ample
constexpr double kStable = 0.01;             // of an interval's width

// Draws the sources and asks the model, block by block.
class Trials {
 public:
  Trials(std::span<const Source> sources, const BlockModel& model, std::size_t resultCount,
         const Points& points)
      : sources_(sources),
        model_(model),
        points_(points),
        drawn_(sources.size()),
        results_(resultCount) {
    for (std::size_t i = 0; i < sources.size(); ++i) drawn_[i].at.fill(sources[i].value);
  }

  // Rows [0, trials) of one block, all sources varying or only one.
  std::span<Column> Run(std::size_t block, std::size_t trials) {
    for (std::size_t i = 0; i < sources_.size(); ++i) Vary(i, block);
    model_(drawn_, trials, results_);
    return results_;
  }
  std::span<Column> RunOne(std::size_t source, std::size_t block) {
    Vary(source, block);
    model_(drawn_, kBlockTrials, results_);
    return results_;
  }

  // Puts a source back to its value.
  void Rest(std::size_t source) { drawn_[source].at.fill(sources_[source].value); }

  // What the model gives for the values. Only before anything varied.
  std::span<const Column> RunCentre() {
    model_(drawn_, 1, results_);
    return results_;
  }

 private:
  void Vary(std::size_t i, std::size_t block) {
    const Source& source = sources_[i];
    if (source.u == 0.0) return;
    const Column& errors = points_.Errors(i, source.distribution, block, scratch_);
    for (std::size_t k = 0; k < kBlockTrials; ++k) {
      drawn_[i].at[k] = source.value + source.u * errors.at[k];
    }
  }

  std::span<const Source> sources_;
  const BlockModel& model_;
  const Points& points_;
  std::vector<Column> drawn_;
  std::vector<Column> results_;
  Column scratch_;
};

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

// Sums of one result, and brackets for both ends of its interval.
struct Tally {
  Sums sums;
  Bracket low = {.low = -kInfinity, .high = kInfinity};
  Bracket high = low;
};

Bracket BracketAround(std::span<const double> sorted, std::size_t rank) {
  const bool hasLow = rank > kPilotMargin;
  const bool hasHigh = rank + kPilotMargin <= sorted.size();
  return {.low = hasLow ? sorted[rank - kPilotMargin - 1] : -kInfinity,
          .high = hasHigh ? sorted[rank + kPilotMargin - 1] : kInfinity};
}

// One propagation while it goes on.
class Propagation {
 public:
  Propagation(Trials& trials, std::size_t resultCount, double coverage)
      : trials_(trials), coverage_(coverage), tallies_(resultCount) {
    const std::span<const Column> centre = trials.RunCentre();
    for (std::size_t i = 0; i < resultCount; ++i) tallies_[i].sums.shift = centre[i].at[0];
  }

  // Looks where the ends lie, from the first trials, which are as evenly spread as all.
  void RunPilot() {
    std::vector<std::vector<double>> values(tallies_.size());
    for (std::size_t block = 0; block < kPilotTrials / kBlockTrials; ++block) {
      const std::span<const Column> results = trials_.Run(block, kBlockTrials);
      for (std::size_t i = 0; i < values.size(); ++i) {
        values[i].insert(values[i].end(), results[i].at.begin(), results[i].at.end());
      }
    }
    const Ranks ranks = RanksOfEnds(kPilotTrials, coverage_);
    for (std::size_t i = 0; i < values.size(); ++i) {
      std::sort(values[i].begin(), values[i].end());
      tallies_[i].low = BracketAround(values[i], ranks.low);
      tallies_[i].high = BracketAround(values[i], ranks.high);
    }
  }

  // Goes on to so many trials in all; whole blocks but for the last.
  void RunTo(std::size_t count) {
    for (; done_ < count; done_ = std::min(count, done_ + kBlockTrials)) {
      const std::size_t trials = std::min(count - done_, kBlockTrials);
      const std::span<Column> results = trials_.Run(done_ / kBlockTrials, trials);
      const auto first = results[0].at.begin();
      ok_ += trials - static_cast<std::size_t>(
                          std::count(first, first + static_cast<std::ptrdiff_t>(trials), kRefused));
      for (std::size_t i = 0; i < tallies_.size(); ++i) {
        AddTo(tallies_[i].sums, results[i], trials);
        AddTo(tallies_[i].low, results[i], trials);
        AddTo(tallies_[i].high, results[i], trials);
      }
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
                      FindEnd(i, tallies_[i].high, ranks.high)};
    }
    return intervals;
  }

  double Variance(std::size_t result) const {
    return done_ < 2 ? 0.0 : tallies_[result].sums.Variance(done_);
  }
  std::size_t done() const { return done_; }
  std::size_t ok() const { return ok_; }

 private:
  // Where the pilot was misled, all trials are run once more with the bracket opened to the side on
  // which the end was missed.
  double FindEnd(std::size_t result, Bracket& bracket, std::size_t rank) {
    std::optional<double> end = bracket.Ranked(rank);
    while (!end) {
      bracket.Widen(rank);
      for (std::size_t from = 0; from < done_; from += kBlockTrials) {
        const std::size_t trials = std::min(done_ - from, kBlockTrials);
        AddTo(bracket, trials_.Run(from / kBlockTrials, trials)[result], trials);
      }
      end = bracket.Ranked(rank);
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
  for (std::size_t count = std::min(kFirstTrials, settings.trials);;) {
    propagation.RunTo(count);
    std::vector<Interval> now;
    const bool none = propagation.WhatIsLeft() == Completeness::TooManyRefused;
    if (!none) now = propagation.FindIntervals();
    const bool comparable = count > kFirstTrials && before.size() == now.size();
    if (comparable && std::equal(before.begin(), before.end(), now.begin(), IsStable)) return true;
    if (count >= settings.trials) return false;
    before = std::move(now);
    count = std::min(2 * count, settings.trials);
  }
}

// Variances of the results when one source alone varies; empty when the model refuses a trial.
std::vector<double> VariancesOfOne(Trials& trials, std::size_t source, std::vector<Sums> sums) {
  for (std::size_t block = 0; block < kBudgetTrials / kBlockTrials; ++block) {
    const std::span<Column> results = trials.RunOne(source, block);
    if (std::count(results[0].at.begin(), results[0].at.end(), kRefused) != 0) return {};
    for (std::size_t i = 0; i < sums.size(); ++i) AddTo(sums[i], results[i], kBlockTrials);
  }
  std::vector<double> variances;
  for (const Sums& sum : sums) variances.push_back(sum.Variance(kBudgetTrials));
  trials.Rest(source);
  return variances;
}

void AddBudget(std::span<const Source> sources, Trials trials, std::vector<Spread>& spreads) {
  std::vector<Sums> sums;
  for (const Column& centre : trials.RunCentre()) sums.push_back({.shift = centre.at[0]});
  std::vector<std::vector<double>> parts(spreads.size(), std::vector<double>(sources.size()));
  for (std::size_t source = 0; source < sources.size(); ++source) {
    if (sources[source].u == 0.0) continue;
    const std::vector<double> variances = VariancesOfOne(trials, source, sums);
    if (variances.empty()) return;
    for (std::size_t i = 0; i < parts.size(); ++i) parts[i][source] = variances[i];
  }
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const double total = std::accumulate(parts[i].begin(), parts[i].end(), 0.0);
    if (total > 0.0) {
      for (double& part : parts[i]) part /= total;
    }
    spreads[i].budget = std::move(parts[i]);
  }
}

}  // namespace

Propagated Propagate(std::span<const Source> sources, const BlockModel& model,
                     std::size_t resultCount, const Points& points, const Settings& settings) {
  assert(settings.trials >= 1 && settings.trials <= kMaxTrials);
  assert(settings.coverage > 0.0 && settings.coverage < 1.0);
  Trials trials(sources, model, resultCount, points);
  Propagation propagation(trials, resultCount, settings.coverage);
  if (settings.trials > kPilotTrials) propagation.RunPilot();

  Propagated propagated;
  propagated.settled = RunAll(propagation, settings);
  propagated.trials = propagation.done();
  propagated.ok = propagation.ok();
  propagated.completeness = propagation.WhatIsLeft();
  propagated.results.resize(resultCount);
  if (propagated.completeness == Completeness::TooManyRefused) return propagated;
  const std::vector<Interval> intervals = propagation.FindIntervals();
  const bool complete = propagated.completeness == Completeness::Complete;
  for (std::size_t i = 0; i < resultCount; ++i) {
    propagated.results[i].interval = intervals[i];
    if (complete) propagated.results[i].u = std::sqrt(propagation.Variance(i));
  }
  if (complete && settings.budget) {
    AddBudget(sources, Trials(sources, model, resultCount, points), propagated.results);
  }
  return propagated;
}

}  // namespace Uncertainty
