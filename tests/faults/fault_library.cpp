// The calls that the programs, or Qt for them, make on files. They go straight to the
// kernel, so that it does not matter what else is loaded before the C library. Nothing here uses
// stdio for files; its own writes could not be caught.
#include "tests/faults/fault_library.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>

namespace Faults {

namespace {

constexpr std::size_t kPart = 100;  // bytes that a partial transfer handles

enum class Verdict { Pass, Part, Fail };

// What a call does, as far as the kinds of fault distinguish calls.
enum class Sort { Other, Read, Write, CleanUp };

// Interposed calls have no argument to hand it in.
struct State {
  std::atomic<bool> armed = false;
  std::mutex guard;  // of what follows
  std::string folder;
  Fault fault;
  int number = 0;
  int count = 0;
  std::string struck;
};

// Never destroyed: there are calls until the process has ended.
State& TheState() {
  static State& state = *new State;
  return state;
}

std::string PathOf(int descriptor) {
  std::array<char, PATH_MAX> target{};
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = readlink(link.c_str(), target.data(), target.size());
  return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string PathOf(int folder, const char* path) {
  if (path != nullptr && path[0] == '/') return path;
  std::array<char, PATH_MAX> here{};
  std::string base = folder != AT_FDCWD                 ? PathOf(folder)
                     : getcwd(here.data(), here.size()) ? here.data()
                                                        : "";
  if (path != nullptr && path[0] != '\0') base.append("/").append(path);
  return base;
}

bool IsBelow(const std::string& path, const std::string& folder) {
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

void Report(const std::string& call) {
  const char* report = std::getenv("TELMARION_FAULT_REPORT");
  if (report == nullptr) return;
  const long file = syscall(SYS_openat, AT_FDCWD, report, O_WRONLY | O_CREAT | O_APPEND, 0600);
  syscall(SYS_write, file, call.data(), call.size());
  syscall(SYS_close, file);
}

bool IsNumbered(Kind kind, Sort sort) {
  switch (kind) {
    case Kind::Part:
      return sort == Sort::Read || sort == Sort::Write;
    case Kind::Full:
      return sort == Sort::Write;
    default:
      return true;
  }
}

Verdict VerdictBehind(Kind kind, Sort sort) {
  const bool fails = kind == Kind::Full || (kind == Kind::FromThenOn && sort != Sort::CleanUp);
  return fails ? Verdict::Fail : Verdict::Pass;
}

Verdict JudgeNumbered(State& state, const char* call, Sort sort) {
  const int number = ++state.count;
  if (state.number == 0 || number < state.number) return Verdict::Pass;
  if (number > state.number) return VerdictBehind(state.fault.kind, sort);
  state.struck = call;
  Report(state.struck);
  const bool part = state.fault.kind == Kind::Part || state.fault.kind == Kind::Full;
  return part ? Verdict::Part : Verdict::Fail;
}

// `path` is a function: naming the file takes calls of its own, which nobody needs while unarmed.
template <class Path>
Verdict Judge(const char* call, Sort sort, const Path& path) {
  State& state = TheState();
  if (!state.armed) return Verdict::Pass;
  const int before = errno;  // a call that goes well leaves it alone
  Verdict verdict = Verdict::Pass;
  int error = state.fault.error;
  {
    const std::lock_guard lock(state.guard);
    const bool impossible = state.fault.impossible == call;
    if ((impossible || IsNumbered(state.fault.kind, sort)) && IsBelow(path(), state.folder)) {
      verdict = impossible ? Verdict::Fail : JudgeNumbered(state, call, sort);
    }
    if (impossible) error = EOPNOTSUPP;
  }
  errno = verdict == Verdict::Fail ? error : before;
  return verdict;
}

template <class Path, class Real>
int Call(const char* call, Sort sort, const Path& path, const Real& real) {
  if (Judge(call, sort, path) == Verdict::Fail) return -1;
  return static_cast<int>(real());
}

// A read or a write of `size` bytes.
template <class Real>
ssize_t Transfer(const char* call, Sort sort, int file, std::size_t size, const Real& real) {
  const Verdict verdict = Judge(call, sort, [file] { return PathOf(file); });
  if (verdict == Verdict::Fail) return -1;
  return real(verdict == Verdict::Part ? std::min(size, kPart) : size);
}

int Open(const char* call, int folder, const char* path, int flags, mode_t mode) {
  const bool nameless = (flags & O_TMPFILE) == O_TMPFILE;
  return Call(
      nameless ? "O_TMPFILE" : call, Sort::Other, [=] { return PathOf(folder, path); },
      [=] { return syscall(SYS_openat, folder, path, flags, mode); });
}

int Look(const char* call, int folder, const char* path, void* status, int flags) {
  return Call(
      call, Sort::Other, [=] { return PathOf(folder, path); },
      [=] { return syscall(SYS_newfstatat, folder, path, status, flags); });
}

int Rename(const char* call, int from, const char* old, int to, const char* fresh, unsigned flags) {
  return Call(
      call, Sort::Other, [=] { return PathOf(to, fresh); },
      [=] { return syscall(SYS_renameat2, from, old, to, fresh, flags); });
}

int Link(const char* call, int from, const char* old, int to, const char* fresh, int flags) {
  return Call(
      call, Sort::Other, [=] { return PathOf(to, fresh); },
      [=] { return syscall(SYS_linkat, from, old, to, fresh, flags); });
}

template <class Real>
int OnFile(const char* call, int file, const Real& real) {
  return Call(
      call, Sort::Other, [file] { return PathOf(file); }, real);
}

// The mode follows the flags only where the call may create a file.
mode_t ModeBehind(int flags, va_list rest) {
  const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return makes ? va_arg(rest, mode_t) : 0;
}

Kind KindOf(std::string_view name) {
  if (name == "from then on") return Kind::FromThenOn;
  if (name == "part") return Kind::Part;
  if (name == "full") return Kind::Full;
  return Kind::Once;
}

[[gnu::constructor]] void TakeOrdersFromEnvironment() {
  const auto order = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  };
  const std::string folder = order("TELMARION_FAULT_FOLDER");
  if (folder.empty()) return;
  Arm(folder,
      {KindOf(order("TELMARION_FAULT_KIND")), std::atoi(order("TELMARION_FAULT_ERROR").c_str()),
       order("TELMARION_FAULT_IMPOSSIBLE")},
      std::atoi(order("TELMARION_FAULT_NUMBER").c_str()));
}

}  // namespace

void Arm(const std::string& folder, const Fault& fault, int number) {
  State& state = TheState();
  const std::lock_guard lock(state.guard);
  state.folder = folder;
  state.fault = fault;
  state.number = number;
  state.count = 0;
  state.struck.clear();
  state.armed = true;
}

std::string Disarm() {
  State& state = TheState();
  const std::lock_guard lock(state.guard);
  state.armed = false;
  return state.struck;
}

}  // namespace Faults

using Faults::Sort;

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = Faults::ModeBehind(flags, rest);
  va_end(rest);
  return Faults::Open("open", AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = Faults::ModeBehind(flags, rest);
  va_end(rest);
  return Faults::Open("open", AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = Faults::ModeBehind(flags, rest);
  va_end(rest);
  return Faults::Open("openat", folder, path, flags, mode);
}

int creat(const char* path, mode_t mode) {
  return Faults::Open("creat", AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

ssize_t read(int file, void* bytes, std::size_t size) {
  return Faults::Transfer("read", Sort::Read, file, size,
                          [=](std::size_t part) { return syscall(SYS_read, file, bytes, part); });
}

ssize_t pread64(int file, void* bytes, std::size_t size, off64_t place) {
  return Faults::Transfer("pread", Sort::Read, file, size, [=](std::size_t part) {
    return syscall(SYS_pread64, file, bytes, part, place);
  });
}

ssize_t write(int file, const void* bytes, std::size_t size) {
  return Faults::Transfer("write", Sort::Write, file, size,
                          [=](std::size_t part) { return syscall(SYS_write, file, bytes, part); });
}

ssize_t pwrite64(int file, const void* bytes, std::size_t size, off64_t place) {
  return Faults::Transfer("pwrite", Sort::Write, file, size, [=](std::size_t part) {
    return syscall(SYS_pwrite64, file, bytes, part, place);
  });
}

// A part of it is its first piece.
ssize_t writev(int file, const iovec* pieces, int count) {
  const auto size = static_cast<std::size_t>(count);
  return Faults::Transfer("writev", Sort::Write, file, size, [=](std::size_t part) {
    return syscall(SYS_writev, file, pieces, part == size ? count : 1);
  });
}

int fsync(int file) {
  return Faults::OnFile("fsync", file, [=] { return syscall(SYS_fsync, file); });
}

int fdatasync(int file) {
  return Faults::OnFile("fdatasync", file, [=] { return syscall(SYS_fdatasync, file); });
}

int ftruncate64(int file, off64_t size) noexcept {
  return Faults::OnFile("ftruncate", file, [=] { return syscall(SYS_ftruncate, file, size); });
}

int fchmod(int file, mode_t mode) noexcept {
  return Faults::OnFile("fchmod", file, [=] { return syscall(SYS_fchmod, file, mode); });
}

int fchown(int file, uid_t owner, gid_t group) noexcept {
  return Faults::OnFile("fchown", file, [=] { return syscall(SYS_fchown, file, owner, group); });
}

off64_t lseek64(int file, off64_t place, int from) noexcept {
  const auto verdict = Faults::Judge("lseek", Sort::Other, [=] { return Faults::PathOf(file); });
  return verdict == Faults::Verdict::Fail ? -1 : syscall(SYS_lseek, file, place, from);
}

// A close that fails has closed the file nevertheless.
int close(int file) {
  const auto verdict = Faults::Judge("close", Sort::CleanUp, [=] { return Faults::PathOf(file); });
  const int error = errno;
  const auto result = static_cast<int>(syscall(SYS_close, file));
  if (verdict != Faults::Verdict::Fail) return result;
  errno = error;
  return -1;
}

int rename(const char* from, const char* to) noexcept {
  return Faults::Rename("rename", AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int from, const char* old, int to, const char* fresh, unsigned flags) noexcept {
  return Faults::Rename("renameat2", from, old, to, fresh, flags);
}

int link(const char* from, const char* to) noexcept {
  return Faults::Link("link", AT_FDCWD, from, AT_FDCWD, to, 0);
}

int linkat(int from, const char* old, int to, const char* fresh, int flags) noexcept {
  return Faults::Link("linkat", from, old, to, fresh, flags);
}

int access(const char* path, int mode) noexcept {
  return Faults::Call(
      "access", Sort::Other, [=] { return Faults::PathOf(AT_FDCWD, path); },
      [=] { return syscall(SYS_faccessat, AT_FDCWD, path, mode); });
}

int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept {
  return Faults::Call(
      "statx", Sort::Other, [=] { return Faults::PathOf(folder, path); },
      [=] { return syscall(SYS_statx, folder, path, flags, mask, status); });
}

int stat(const char* path, struct stat* status) noexcept {
  return Faults::Look("stat", AT_FDCWD, path, status, 0);
}

int stat64(const char* path, struct stat64* status) noexcept {
  return Faults::Look("stat", AT_FDCWD, path, status, 0);
}

int lstat64(const char* path, struct stat64* status) noexcept {
  return Faults::Look("lstat", AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

int fstat(int file, struct stat* status) noexcept {
  return Faults::Look("fstat", file, "", status, AT_EMPTY_PATH);
}

int fstat64(int file, struct stat64* status) noexcept {
  return Faults::Look("fstat", file, "", status, AT_EMPTY_PATH);
}

// No call on files: the system gives so many threads and no more.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
  static const auto real =
      reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  static std::atomic<int> made = 0;
  const char* most = std::getenv("TELMARION_FAULT_THREADS");
  if (most != nullptr && made++ >= std::atoi(most)) return EAGAIN;
  return real(thread, attributes, start, argument);
}

}  // extern "C"
