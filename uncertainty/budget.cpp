// One part of the sources at a time.
#include "uncertainty/budget.h"

#include <algorithm>
#include <numeric>

#include "uncertainty/tally.h"

namespace Uncertainty {

namespace {

// One source alone is spread so evenly that a thousandth of its variance is met.
constexpr std::size_t kTrials = 1024;

// Of each result; nothing when a trial is refused.
std::vector<double> VariancesOfOne(Trials& trials, SourceRange part, std::vector<Sums> sums) {
  for (std::size_t block = 0; block < kTrials / kBlockTrials; ++block) {
    const std::span<Column> results = trials.RunPart(part, block);
    if (std::count(results[0].at.begin(), results[0].at.end(), kRefused) != 0) return {};
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i].Add(results[i], kBlockTrials);
  }
  std::vector<double> variances(sums.size());
  for (std::size_t i = 0; i < sums.size(); ++i) variances[i] = sums[i].Variance(kTrials);
  return variances;
}

std::vector<SourceRange> RangesOf(std::span<const std::size_t> parts, std::size_t sources) {
  std::vector<SourceRange> ranges;
  if (parts.empty()) {
    for (std::size_t source = 0; source < sources; ++source) ranges.push_back({source, source + 1});
  }
  for (std::size_t i = 1; i < parts.size(); ++i) ranges.push_back({parts[i - 1], parts[i]});
  return ranges;
}

void Normalise(std::vector<double>& parts) {
  const double total = std::accumulate(parts.begin(), parts.end(), 0.0);
  if (total == 0.0) return;
  for (double& part : parts) part /= total;
}

}  // namespace

std::vector<std::vector<double>> ComputeBudget(Trials& trials, std::span<const std::size_t> parts) {
  const std::vector<SourceRange> ranges = RangesOf(parts, trials.sources().size());
  const std::vector<Sums> sums = SumsAboutCentre(trials.RunCentre());
  std::vector<std::vector<double>> budget(sums.size(), std::vector<double>(ranges.size()));
  for (std::size_t part = 0; part < ranges.size(); ++part) {
    if (!trials.Varies(ranges[part])) continue;
    const std::vector<double> variances = VariancesOfOne(trials, ranges[part], sums);
    if (variances.empty()) return {};
    for (std::size_t i = 0; i < budget.size(); ++i) budget[i][part] = variances[i];
  }
  for (std::vector<double>& shares : budget) Normalise(shares);
  return budget;
}

}  // namespace Uncertainty
