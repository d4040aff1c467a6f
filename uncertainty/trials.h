// Draws the sources and asks the model, block by block. One object serves one propagation.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "uncertainty/block.h"
#include "uncertainty/points.h"
#include "uncertainty/source.h"

namespace Uncertainty {

// The sources from `first` to before `end`.
struct SourceRange {
  std::size_t first = 0;
  std::size_t end = 0;
};

class Trials {
 public:
  // Sources, model and points must outlive it. Every source stands at its value.
  Trials(std::span<const Source> sources, const BlockModel& model, std::size_t resultCount,
         const Points& points);

  // The results of the rows [0, trials) of one block. They stay until the next run.
  std::span<Column> Run(std::size_t block, std::size_t trials);

  // The same for a whole block in which these sources alone vary; they go back to their values.
  std::span<Column> RunPart(SourceRange part, std::size_t block);

  // What the model gives for the values, in the first row.
  std::span<const Column> RunCentre();

  // One of these sources has an error.
  bool Varies(SourceRange part) const;

  std::size_t resultCount() const { return results_.size(); }
  std::span<const Source> sources() const { return sources_; }

 private:
  void Vary(std::size_t source, std::size_t block);
  void Rest(std::size_t source);

  Column scratch_{};
  std::span<const Source> sources_;
  const BlockModel& model_;
  const Points& points_;
  std::vector<Column> drawn_;
  std::vector<Column> results_;
  bool rests_ = true;  // every source stands at its value
};

}  // namespace Uncertainty
