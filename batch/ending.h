// Ctrl-C, a lost terminal and the like: what is left to do before a signal ends the program.
#pragma once

#include <csignal>
#include <string>

namespace Cohort {

// While it lives, a signal that would end the program waits. For the one thread that there is.
class EndingHeld {
 public:
  EndingHeld();
  EndingHeld(const EndingHeld&) = delete;
  EndingHeld& operator=(const EndingHeld&) = delete;
  ~EndingHeld();

 private:
  sigset_t before_{};
};

// While it lives, a signal that ends the program removes a file first. There may be one at a time.
class RemovedAtEnding {
 public:
  RemovedAtEnding() = default;
  RemovedAtEnding(const RemovedAtEnding&) = delete;
  RemovedAtEnding& operator=(const RemovedAtEnding&) = delete;
  ~RemovedAtEnding();

  // Signals that the parent ignores (nohup) stay ignored.
  void Watch(const std::string& path);

 private:
  std::string path_;
};

}  // namespace Cohort
