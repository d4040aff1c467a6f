// One line, written over itself.
#include "batch/progress.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace Cohort {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 1s;      // before the line appears
constexpr auto kRefresh = 200ms;    // between two looks of it
constexpr double kBarWidth = 24.0;  // characters
constexpr const char* kErase = "\r\033[K";

}  // namespace

std::string ProgressLine(std::uint64_t hips, double seconds, std::optional<double> share) {
  std::string line;
  std::array<char, 96> text{};
  if (share) {
    const double part = std::clamp(*share, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(part * kBarWidth);
    line = '[' + std::string(filled, '#') +
           std::string(static_cast<std::size_t>(kBarWidth) - filled, '.') + ']';
    std::snprintf(text.data(), text.size(), " %3.0f %%  ", part * 100.0);
    line += text.data();
  }
  const double rate = seconds > 0.0 ? static_cast<double>(hips) / seconds : 0.0;
  std::snprintf(text.data(), text.size(), "%llu rows, %.0f rows/s",
                static_cast<unsigned long long>(hips), rate);
  return line + text.data();
}

Progress::Progress(std::optional<std::uint64_t> totalBytes)
    : terminal_(isatty(STDERR_FILENO) == 1), totalBytes_(totalBytes), shownAt_(start_) {}

Progress::~Progress() {
  Erase();
}

void Progress::Advance(std::uint64_t hips, std::uint64_t bytes) {
  hips_ += hips;
  bytes_ += bytes;
  if (!terminal_) return;
  const Clock::time_point now = Clock::now();
  if (now - start_ < kPatience || (shown_ && now - shownAt_ < kRefresh)) return;
  std::optional<double> share;
  if (totalBytes_ && *totalBytes_ > 0) {
    share = static_cast<double>(bytes_) / static_cast<double>(*totalBytes_);
  }
  const double seconds = std::chrono::duration<double>(now - start_).count();
  std::fputs((kErase + ProgressLine(hips_, seconds, share)).c_str(), stderr);
  shown_ = true;
  shownAt_ = now;
}

void Progress::Erase() {
  if (!shown_) return;
  std::fputs(kErase, stderr);
  shown_ = false;
}

}  // namespace Cohort
