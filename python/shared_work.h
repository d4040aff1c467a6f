// Work in many pieces, done in several threads.
#pragma once

#include <cstddef>
#include <functional>

namespace Python {

struct WorkPlan {
  std::size_t pieces = 0;
  unsigned threads = 1;     // at most, the calling one among them
  std::size_t between = 1;  // pieces that the calling thread does before it asks again
};

// Does piece number n.
using Worker = std::function<void(std::size_t)>;

// `makeWorker` is called once in each thread. False when `goOn`, which the calling thread asks,
// said no; the work is then done in part. What a worker throws ends the work and is thrown here.
bool ShareWork(const WorkPlan& plan, const std::function<Worker()>& makeWorker,
               const std::function<bool()>& goOn);

}  // namespace Python
