// Propagation of distributions by the Monte Carlo method (JCGM 101:2008): from independent sources
// of error through a model to the standard uncertainty of each result, its coverage interval, and
// the part that each source has in it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "uncertainty/block.h"
#include "uncertainty/points.h"
#include "uncertainty/source.h"

namespace Uncertainty {

struct Settings {
  double coverage = 0.95;  // probability of the interval, above 0 and below 1
  // Trials, 1 to kMaxTrials. Automatic: doubled until two doublings in a row move no end of an
  // interval by more than a hundredth of its width, which takes 8192 at least, or until there are
  // this many.
  std::size_t trials = 8192;
  bool automatic = false;
  bool budget = false;  // asked for: it takes a run of its own for each part
  // Where the parts of the budget begin among the sources, and where the last of them ends: sources
  // of one part, such as the coordinates of a mark, vary together. Empty: each source is a part.
  std::span<const std::size_t> parts = {};
};

struct Interval {
  double low = 0.0;
  double high = 0.0;
};

// What the trials that the model refuses leave of the results.
enum class Completeness {
  Complete,        // no trial was refused
  SomeRefused,     // some, but no more than kRefusedShare: there is no variance, since results grow
                   // without bound towards the edge of what the model covers; u and budget are
                   // empty, the interval counts the refused above all others
  TooManyRefused,  // more: there is no interval either
};
inline constexpr double kRefusedShare = 0.002;

// The uncertainty of one result, in the result's unit.
struct Spread {
  std::optional<double> u;           // standard uncertainty
  std::optional<Interval> interval;  // probabilistically symmetric (JCGM 101, 7.7)
  // The share of each part in the sum of the variances found when one part of the sources varies
  // and the others keep their values (JCGM 101, annex B). Shares add up to 1; all are 0 when no
  // source moves the result. Empty when not asked for, or when there is no u or no variance.
  std::vector<double> budget;
};

struct Propagated {
  std::size_t trials = 0;
  std::size_t ok = 0;   // trials with an answer
  bool settled = true;  // false when automatic and the ends still moved at the cap
  Completeness completeness = Completeness::Complete;
  std::vector<Spread> results;
};

// Source i draws from dimension i of the points. When no source moves a result, its u is 0 and both
// ends of its interval are the very number that the model gives for the values.
Propagated Propagate(std::span<const Source> sources, const BlockModel& model,
                     std::size_t resultCount, const Points& points, const Settings& settings);

}  // namespace Uncertainty
