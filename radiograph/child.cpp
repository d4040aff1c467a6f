#include "radiograph/child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>

namespace Radiography {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLook{20};  // how often a cancellation is looked for
constexpr int kPipeSize = 1 << 20;              // bytes

// An end of a pipe.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  int Number() const { return number_; }
  void Close() {
    if (number_ >= 0) close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

// What is done between fork and exec: our pipe is the standard output, no other file is handed on,
// and no signal is held back or ignored.
class SpawnPlan {
 public:
  explicit SpawnPlan(int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  // Zero, or the system's reason.
  int Start(const std::vector<std::string>& command, pid_t& child) const {
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    return posix_spawn(&child, words[0], &actions_, &attributes_, words.data(), environ);
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

// One child, until it is gone.
class Child {
 public:
  Child(pid_t process, Clock::time_point deadline, const std::stop_token& stop)
      : process_(process), deadline_(deadline), stop_(stop) {}
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }

  // Reads up to the end of what it writes.
  ChildEnd Read(int from, std::size_t most, std::string& output) {
    std::string piece(kPipeSize, '\0');
    while (!OutOfTime()) {
      pollfd waiting{from, POLLIN, 0};
      if (poll(&waiting, 1, static_cast<int>(kLook.count())) <= 0) continue;
      const ssize_t got = read(from, piece.data(), piece.size());
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return ChildEnd::Finished;
      if (output.size() + static_cast<std::size_t>(got) > most) return ChildEnd::WroteTooMuch;
      output.append(piece.data(), static_cast<std::size_t>(got));
    }
    return WhyOut();
  }

  // Lets it end by itself.
  ChildEnd Wait() {
    while (!OutOfTime()) {
      const pid_t gone = waitpid(process_, nullptr, WNOHANG);
      if (gone == process_) {
        process_ = -1;
        return ChildEnd::Finished;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return WhyOut();
  }

 private:
  bool OutOfTime() const { return stop_.stop_requested() || Clock::now() >= deadline_; }
  ChildEnd WhyOut() const {
    return stop_.stop_requested() ? ChildEnd::Cancelled : ChildEnd::TookTooLong;
  }

  pid_t process_;
  Clock::time_point deadline_;
  const std::stop_token& stop_;
};

ChildRun NotStarted(int reason) {
  return {ChildEnd::NotStarted, {}, std::generic_category().message(reason)};
}

}  // namespace

ChildRun RunChild(const std::vector<std::string>& command, std::chrono::milliseconds time,
                  std::size_t mostOutput, const std::stop_token& stop) {
  const Clock::time_point deadline = Clock::now() + time;
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) return NotStarted(errno);
  const Descriptor readEnd(ends[0]);
  Descriptor writeEnd(ends[1]);
  fcntl(readEnd.Number(), F_SETPIPE_SZ, kPipeSize);
  pid_t process = -1;
  const int reason = SpawnPlan(writeEnd.Number()).Start(command, process);
  if (reason != 0) return NotStarted(reason);
  writeEnd.Close();
  Child child(process, deadline, stop);
  ChildRun run;
  run.end = child.Read(readEnd.Number(), mostOutput, run.output);
  if (run.end == ChildEnd::Finished) run.end = child.Wait();
  return run;
}

}  // namespace Radiography
