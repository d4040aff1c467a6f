// Blocks of drawn sources.
#include "uncertainty/trials.h"

#include <algorithm>

namespace Uncertainty {

Trials::Trials(std::span<const Source> sources, const BlockModel& model, std::size_t resultCount,
               const Points& points)
    : sources_(sources),
      model_(model),
      points_(points),
      drawn_(sources.size()),
      results_(resultCount) {
  for (std::size_t i = 0; i < sources.size(); ++i) Rest(i);
}

std::span<Column> Trials::Run(std::size_t block, std::size_t trials) {
  for (std::size_t i = 0; i < sources_.size(); ++i) Vary(i, block);
  rests_ = false;
  model_(drawn_, trials, results_);
  return results_;
}

std::span<Column> Trials::RunPart(SourceRange part, std::size_t block) {
  RunCentre();
  for (std::size_t i = part.first; i < part.end; ++i) Vary(i, block);
  model_(drawn_, kBlockTrials, results_);
  for (std::size_t i = part.first; i < part.end; ++i) Rest(i);
  return results_;
}

bool Trials::Varies(SourceRange part) const {
  const auto errs = [](const Source& source) { return source.u != 0.0; };
  const std::span<const Source> sources = sources_.subspan(part.first, part.end - part.first);
  return std::any_of(sources.begin(), sources.end(), errs);
}

std::span<const Column> Trials::RunCentre() {
  for (std::size_t i = 0; !rests_ && i < sources_.size(); ++i) Rest(i);
  rests_ = true;
  model_(drawn_, 1, results_);
  return results_;
}

void Trials::Vary(std::size_t source, std::size_t block) {
  const Source& s = sources_[source];
  if (s.u == 0.0) return;
  const Column& errors = points_.Errors(source, s.distribution, block, scratch_);
  Column& drawn = drawn_[source];
  for (std::size_t k = 0; k < kBlockTrials; ++k) drawn.at[k] = s.value + s.u * errors.at[k];
}

void Trials::Rest(std::size_t source) {
  drawn_[source].at.fill(sources_[source].value);
}

}  // namespace Uncertainty
