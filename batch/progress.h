// The line on the terminal that says how far a long run is.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace Cohort {

class Progress {
 public:
  // `totalBytes` of input where they are known. Nothing is ever shown unless standard error is a
  // terminal and the run has taken a second.
  explicit Progress(std::optional<std::uint64_t> totalBytes);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // Counts, and shows the line anew when it is time.
  void Advance(std::uint64_t hips, std::uint64_t bytes);

  // Takes the line away; before results go to the same terminal.
  void Erase();

 private:
  using Clock = std::chrono::steady_clock;

  bool terminal_;
  std::optional<std::uint64_t> totalBytes_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point shownAt_;
  bool shown_ = false;
  std::uint64_t hips_ = 0;
  std::uint64_t bytes_ = 0;
};

// The line: a bar and the share of the bytes where the total is known, the rows, rows per second.
std::string ProgressLine(std::uint64_t hips, double seconds, std::optional<double> share);

}  // namespace Cohort
