// A program that is run for what it writes, within a limit of time.
#pragma once

#include <chrono>
#include <stop_token>
#include <string>
#include <vector>

namespace Radiography {

enum class ChildEnd { Finished, NotStarted, TookTooLong, Cancelled, WroteTooMuch };

struct ChildRun {
  ChildEnd end = ChildEnd::NotStarted;
  std::string output;  // of the standard output; the standard error is dropped
  std::string reason;  // the system's, why it was not started
};

// Starts command[0], a path, and waits for its end. Whatever the outcome, the program is gone when
// this returns. `mostOutput` in bytes.
ChildRun RunChild(const std::vector<std::string>& command, std::chrono::milliseconds time,
                  std::size_t mostOutput, const std::stop_token& stop);

}  // namespace Radiography
