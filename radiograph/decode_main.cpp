// Decodes one picture file and writes the answer to its standard output, within a limit of memory.
//
// Usage: telmarion-decode BYTES FILE
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <new>
#include <system_error>

#include "radiograph/answer.h"
#include "radiograph/decoding/decode.h"

using namespace Radiography;

namespace {

// The sanitizers reserve address space of their own by the terabyte.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kLimitMemory = false;
#else
constexpr bool kLimitMemory = true;
#endif

void Limit(decltype(RLIMIT_AS) what, rlim_t most) {
  const rlimit limit{most, most};
  setrlimit(what, &limit);
}

// Nothing is written but the answer, and nobody is left behind when the program that asks is gone.
void Confine(rlim_t memory) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_FSIZE, 0);
  if (kLimitMemory) Limit(RLIMIT_AS, memory);
}

[[noreturn]] void CannotOpen() {
  Refuse(ReadTrouble::CannotOpen, std::generic_category().message(errno));
}

// The whole file; not from a device or a pipe, which may have no end.
std::vector<std::uint8_t> ReadFile(const char* path) {
  const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) CannotOpen();
  struct stat facts {};
  if (fstat(file, &facts) != 0) CannotOpen();
  if (!S_ISREG(facts.st_mode)) Refuse(ReadTrouble::CannotOpen, "it is no ordinary file");
  if (facts.st_size > PictureLimits{}.bytes) Refuse(ReadTrouble::TooLarge);
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(facts.st_size));
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t got = read(file, bytes.data() + done, bytes.size() - done);
    if (got < 0) CannotOpen();
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  close(file);
  return bytes;
}

// The picture and its bytes, or why there is none: either may be too large for the memory.
std::string Answer(const char* path) {
  try {
    return ComposeAnswer(DecodePicture(ReadFile(path)));
  } catch (const Refusal& refusal) {
    return ComposeAnswer(refusal.failure);
  } catch (const std::bad_alloc&) {
    return ComposeAnswer(ReadFailure{ReadTrouble::TooMuchMemory, {}});
  }
}

bool WriteAll(const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t put = write(STDOUT_FILENO, bytes.data() + done, bytes.size() - done);
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return EXIT_FAILURE;
  Confine(std::strtoull(argv[1], nullptr, 10));
  const QCoreApplication application(argc, argv);  // it knows where the picture formats lie
  const bool written = WriteAll(Answer(argv[2]));
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
