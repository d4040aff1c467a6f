// One source at a time.
#include "uncertainty/budget.h"

#include <algorithm>
#include <numeric>

#include "uncertainty/tally.h"

namespace Uncertainty {

namespace {

// One source alone is spread so evenly that a thousandth of its variance is met.
constexpr std::size_t kTrials = 1024;

// Of each result; nothing when a trial is refused.
std::vector<double> VariancesOfOne(Trials& trials, std::size_t source, std::vector<Sums> sums) {
  for (std::size_t block = 0; block < kTrials / kBlockTrials; ++block) {
    const std::span<Column> results = trials.RunOne(source, block);
    if (std::count(results[0].at.begin(), results[0].at.end(), kRefused) != 0) return {};
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i].Add(results[i], kBlockTrials);
  }
  std::vector<double> variances(sums.size());
  for (std::size_t i = 0; i < sums.size(); ++i) variances[i] = sums[i].Variance(kTrials);
  return variances;
}

void Normalise(std::vector<double>& parts) {
  const double total = std::accumulate(parts.begin(), parts.end(), 0.0);
  if (total == 0.0) return;
  for (double& part : parts) part /= total;
}

}  // namespace

std::vector<std::vector<double>> ComputeBudget(Trials& trials) {
  const std::span<const Source> sources = trials.sources();
  const std::vector<Sums> sums = SumsAboutCentre(trials.RunCentre());
  std::vector<std::vector<double>> budget(sums.size(), std::vector<double>(sources.size()));
  for (std::size_t source = 0; source < sources.size(); ++source) {
    if (sources[source].u == 0.0) continue;
    const std::vector<double> variances = VariancesOfOne(trials, source, sums);
    if (variances.empty()) return {};
    for (std::size_t i = 0; i < budget.size(); ++i) budget[i][source] = variances[i];
  }
  for (std::vector<double>& parts : budget) Normalise(parts);
  return budget;
}

}  // namespace Uncertainty
