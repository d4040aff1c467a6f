// Every thread takes the next piece when it is done with one.
#include "python/shared_work.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace Python {

namespace {

// One object serves one call.
class Sharing {
 public:
  Sharing(const WorkPlan& plan, const std::function<Worker()>& makeWorker)
      : plan_(plan), makeWorker_(makeWorker) {}

  // For every thread but the calling one. Throws nothing.
  void Help() {
    DoGuarded([] { return true; });
  }

  // False when `goOn` said no.
  bool Do(const std::function<bool()>& goOn) {
    DoGuarded(goOn);
    return !refused_;
  }

  // Once all threads have ended.
  void ThrowTrouble() const {
    if (trouble_) std::rethrow_exception(trouble_);
  }

 private:
  void DoGuarded(const std::function<bool()>& goOn) {
    try {
      DoPieces(goOn);
    } catch (...) {
      stopped_ = true;
      const std::scoped_lock lock(mutex_);
      if (!trouble_) trouble_ = std::current_exception();
    }
  }

  void DoPieces(const std::function<bool()>& goOn) {
    const Worker worker = makeWorker_();
    for (std::size_t done = 1; !stopped_; ++done) {
      const std::size_t piece = next_++;
      if (piece >= plan_.pieces) return;
      worker(piece);
      if (done % plan_.between == 0 && !goOn()) {
        refused_ = true;
        stopped_ = true;
      }
    }
  }

  const WorkPlan plan_;
  const std::function<Worker()>& makeWorker_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> stopped_ = false;
  bool refused_ = false;  // written and read by the calling thread
  std::mutex mutex_;
  std::exception_ptr trouble_;
};

// As many as the system lets us have; the calling thread does what they leave.
std::vector<std::jthread> StartHelpers(Sharing& sharing, std::size_t helpers) {
  std::vector<std::jthread> started;
  started.reserve(helpers);
  try {
    while (started.size() < helpers) started.emplace_back([&sharing] { sharing.Help(); });
  } catch (const std::system_error&) {
  }
  return started;
}

}  // namespace

bool ShareWork(const WorkPlan& plan, const std::function<Worker()>& makeWorker,
               const std::function<bool()>& goOn) {
  Sharing sharing(plan, makeWorker);
  const std::size_t useful = std::min<std::size_t>(plan.threads, plan.pieces);
  bool complete = false;
  {
    const std::vector<std::jthread> helpers = StartHelpers(sharing, useful > 1 ? useful - 1 : 0);
    complete = sharing.Do(goOn);
  }
  sharing.ThrowTrouble();
  return complete;
}

}  // namespace Python
