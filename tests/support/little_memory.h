// Little memory, for tests of what happens when it is refused.
#pragma once

// The sanitizers reserve address space of their own by the terabyte, so that it cannot be limited.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define TELMARION_MEMORY_CAN_BE_LIMITED

#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>

// As long as it lives, this process and its children have no more than `spare` bytes of address
// space beyond what this process has now.
class LittleMemory {
 public:
  explicit LittleMemory(std::size_t spare) {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    getrlimit(RLIMIT_AS, &before_);
    const auto used = static_cast<rlim_t>(pages * sysconf(_SC_PAGESIZE));
    const rlimit little{used + spare, before_.rlim_max};
    setrlimit(RLIMIT_AS, &little);
  }
  LittleMemory(const LittleMemory&) = delete;
  LittleMemory& operator=(const LittleMemory&) = delete;
  ~LittleMemory() { setrlimit(RLIMIT_AS, &before_); }

 private:
  rlimit before_{};
};

#endif
