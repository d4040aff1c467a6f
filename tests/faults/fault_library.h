// Makes one call to the system fail on demand, for files in one folder only. The library stands in
// front of the C library: in a test program that is linked with it, or preloaded into another.
//
// A preloaded library takes its orders from the environment: TELMARION_FAULT_FOLDER,
// TELMARION_FAULT_KIND ("once", "from then on", "part", "full"), TELMARION_FAULT_ERROR (a number of
// errno.h), TELMARION_FAULT_NUMBER and TELMARION_FAULT_IMPOSSIBLE. When it strikes it writes the
// call's name to the file TELMARION_FAULT_REPORT. TELMARION_FAULT_THREADS is how many threads can
// be made at all.
#pragma once

#include <string>

namespace Faults {

enum class Kind {
  Once,        // one call fails
  FromThenOn,  // so do all behind it, but for what cleans up: close and unlink
  Part,        // one read or write handles a few bytes of what was asked
  Full,        // one write does, and all behind it fail: a disk that fills up
};

struct Fault {
  Kind kind = Kind::Once;
  int error = 0;  // what failing calls leave in errno
  // A call that the file system cannot do at all, by its name. That is no strike. "O_TMPFILE" is to
  // open a file that has no name.
  std::string impossible = {};
};

// From now on the call with this number, from 1, among those that concern `folder` (absolute, no
// link) or what is in it strikes; with number 0 none does. Kinds Part and Full number reads and
// writes alone.
void Arm(const std::string& folder, const Fault& fault, int number);

// Lets all calls through again. Gives the call that the fault has struck; empty when there were
// fewer calls.
std::string Disarm();

}  // namespace Faults
