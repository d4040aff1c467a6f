// Figures from the kernel, from the C library's heap and from Qt.
#include "tests/longrun/measure.h"

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

constexpr double kKiB = 1024.0;

double Milliseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double ResidentKiB() {
  std::ifstream file("/proc/self/statm");
  long whole = 0;
  long resident = 0;  // pages
  file >> whole >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / kKiB;
}

// Large blocks that the heap maps apart are counted too.
double HeapKiB() {
  const auto heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd) / kKiB;
}

double Handles() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<double>(std::distance(begin(all), end(all)));
}

double Threads() {
  const std::filesystem::directory_iterator all("/proc/self/task");
  return static_cast<double>(std::distance(begin(all), end(all)));
}

// The parent's number is the second field behind the name, which stands in brackets.
bool IsOurs(const std::filesystem::path& process) {
  std::ifstream file(process / "stat");
  std::string line;
  std::getline(file, line);
  std::istringstream rest(line.substr(line.rfind(')') + 1));
  char state = ' ';
  pid_t parent = 0;
  rest >> state >> parent;
  return parent == getpid();
}

double Processes() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename().string();
    if (std::isdigit(static_cast<unsigned char>(name[0])) != 0 && IsOurs(entry.path())) ++count;
  }
  return count;
}

double Objects() {
  qsizetype count = 0;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    count += 1 + window->findChildren<QObject*>().size();
  }
  return static_cast<double>(count);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double MedianOfQuarter(const std::vector<Sample>& samples, std::size_t quarter,
                       double Sample::*figure) {
  std::vector<double> values;
  const std::size_t begin = samples.size() * quarter / 4;
  const std::size_t end = samples.size() * (quarter + 1) / 4;
  for (std::size_t i = begin; i < end; ++i) values.push_back(samples[i].*figure);
  return Median(std::move(values));
}

}  // namespace

Stretch::Stretch()
    : processorStart_(Milliseconds(CLOCK_PROCESS_CPUTIME_ID)),
      wallStart_(Milliseconds(CLOCK_MONOTONIC)) {}

Sample Stretch::Measure(int roundsInStretch, int roundsDone) const {
  Sample sample;
  sample.rounds = roundsDone;
  sample.processorMs = (Milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processorStart_) / roundsInStretch;
  sample.wallMs = (Milliseconds(CLOCK_MONOTONIC) - wallStart_) / roundsInStretch;
  sample.residentKiB = ResidentKiB();
  sample.heapKiB = HeapKiB();
  sample.handles = Handles();
  sample.threads = Threads();
  sample.processes = Processes();
  sample.widgets = static_cast<double>(QApplication::allWidgets().size());
  sample.objects = Objects();
  return sample;
}

std::string FindGrowth(const std::vector<Sample>& samples, double Sample::*figure,
                       const std::string& name, const Allowance& allowed) {
  const double before = MedianOfQuarter(samples, 1, figure);
  const double after = MedianOfQuarter(samples, 3, figure);
  if (after <= before + allowed.absolute + allowed.relative * before) return {};
  return name + " grew from " + std::to_string(before) + " to " + std::to_string(after);
}

std::string TableHead() {
  return "| rounds | resident, KiB | heap, KiB | handles | threads | processes | widgets | objects "
         "| processor, ms/round | wall, ms/round |\n"
         "|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n";
}

std::string TableLine(const Sample& sample) {
  std::array<char, 200> line{};
  std::snprintf(line.data(), line.size(),
                "| %d | %.0f | %.0f | %.0f | %.0f | %.0f | %.0f | %.0f | %.1f | %.1f |\n",
                sample.rounds, sample.residentKiB, sample.heapKiB, sample.handles, sample.threads,
                sample.processes, sample.widgets, sample.objects, sample.processorMs,
                sample.wallMs);
  return line.data();
}
