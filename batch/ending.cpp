// The program ends by the signal itself, so that whoever started it sees why.
#include "batch/ending.h"

#include <unistd.h>

#include <array>
#include <atomic>

namespace Cohort {

namespace {

constexpr std::array kEndings = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// Handlers have no other way to it.
constinit std::atomic<const char*> fileToRemove = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

// SA_RESETHAND has brought the default back, by which the second signal ends the program.
extern "C" void RemoveAndEnd(int signal) {
  const char* path = fileToRemove;
  if (path != nullptr) unlink(path);
  raise(signal);
}

}  // namespace

EndingHeld::EndingHeld() {
  sigset_t endings{};
  sigemptyset(&endings);
  for (const int signal : kEndings) sigaddset(&endings, signal);
  pthread_sigmask(SIG_BLOCK, &endings, &before_);
}

EndingHeld::~EndingHeld() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void RemovedAtEnding::Watch(const std::string& path) {
  path_ = path;
  fileToRemove = path_.c_str();
  struct sigaction action {};
  action.sa_handler = RemoveAndEnd;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  sigemptyset(&action.sa_mask);
  for (const int signal : kEndings) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_DFL) sigaction(signal, &action, nullptr);
  }
}

RemovedAtEnding::~RemovedAtEnding() {
  fileToRemove = nullptr;
}

}  // namespace Cohort
