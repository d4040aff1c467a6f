// Walks a fault of the system through all calls of an operation.
#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QString>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "tests/faults/fault_library.h"

namespace Faults {

inline std::vector<Fault> WhileWriting() {
  std::vector<Fault> faults = {{Kind::Part, 0}, {Kind::Full, ENOSPC}};
  for (const Kind kind : {Kind::Once, Kind::FromThenOn}) {
    for (const int error : {ENOSPC, EIO, EACCES}) faults.push_back({kind, error});
  }
  return faults;
}

inline std::vector<Fault> WhileReading() {
  std::vector<Fault> faults = {{Kind::Part, 0}};
  for (const Kind kind : {Kind::Once, Kind::FromThenOn}) {
    for (const int error : {EIO, EACCES}) faults.push_back({kind, error});
  }
  return faults;
}

inline std::string NameOf(const Fault& fault) {
  constexpr const char* kKinds[] = {"once", "from then on", "part", "full"};
  const std::string kind = kKinds[static_cast<int>(fault.kind)];
  return fault.error == 0 ? kind : kind + ", " + std::strerror(fault.error);
}

// For the first call of `operate` that concerns files in `folder`, then the second, and so on until
// there are no more: prepares, makes the call fail, checks. Returns how many calls were made to
// fail.
template <class Prepare, class Operate, class Check>
int Walk(const QString& folder, const Fault& fault, const Prepare& prepare, const Operate& operate,
         const Check& check) {
  constexpr int kMostCalls = 1000;
  const std::string place = QFileInfo(folder).canonicalFilePath().toStdString();
  for (int number = 1; number < kMostCalls; ++number) {
    prepare();
    Arm(place, fault, number);
    operate();
    const std::string call = Disarm();
    const testing::ScopedTrace trace(
        __FILE__, __LINE__, NameOf(fault) + ": call " + std::to_string(number) + ", " + call);
    check();
    if (call.empty()) {
      std::cout << NameOf(fault) << ": " << number - 1 << " calls struck\n";
      return number - 1;
    }
  }
  ADD_FAILURE() << "the operation never comes to an end";
  return kMostCalls;
}

}  // namespace Faults
