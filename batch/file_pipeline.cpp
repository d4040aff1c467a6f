// Each worker fetches a chunk, computes it, waits for its turn and hands it over. There is no
// queue: who waits holds the one chunk that it has.
#include "batch/file_pipeline.h"

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "columns/cohort_error.h"

namespace Cohort {

namespace {

class Pipeline {
 public:
  Pipeline(ChunkReader& reader, const HeaderRow& header, const RowFormat& format,
           const TakeResult& take)
      : reader_(reader), header_(header), format_(format), take_(take) {}

  void Run(unsigned threads) {
    {
      std::vector<std::jthread> workers;
      while (workers.size() + 1 < threads && AddWorker(workers)) continue;
      Work();
    }
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  // False where the system gives no further thread; those that there are do the work.
  bool AddWorker(std::vector<std::jthread>& workers) {
    try {
      workers.emplace_back([this] { Work(); });
      return true;
    } catch (const std::system_error&) {
      return false;
    }
  }

  void Work() {
    try {
      ChunkComputer computer(header_, format_);
      const char lineEndIn = reader_.LineEnd().back();
      std::string chunk;
      ChunkResult result;
      std::uint64_t number = 0;
      while (Fetch(chunk, number, result)) {
        if (!result.trouble) computer.Compute(chunk, lineEndIn, result);
        if (!HandOver(number, result)) return;
      }
    } catch (...) {
      Stop(std::current_exception());
    }
  }

  // The next chunk and its number. Trouble in reading is put into `result`.
  bool Fetch(std::string& chunk, std::uint64_t& number, ChunkResult& result) {
    const std::lock_guard lock(reading_);
    if (finished_) return false;
    try {
      finished_ = !reader_.Next(chunk);
      if (finished_) return false;
    } catch (const CohortError& error) {
      finished_ = true;
      result = {};
      result.trouble = RowRemark{1, error.what()};
    }
    number = fetched_++;
    return true;
  }

  // Waits until all earlier chunks are handed over. False when the run has stopped.
  bool HandOver(std::uint64_t number, const ChunkResult& result) {
    std::unique_lock lock(delivery_);
    turn_.wait(lock, [&] { return stopped_ || delivered_ == number; });
    if (stopped_) return false;
    take_(result);
    ++delivered_;
    lock.unlock();
    turn_.notify_all();
    return true;
  }

  void Stop(std::exception_ptr failure) {
    {
      const std::lock_guard lock(delivery_);
      if (!failure_) failure_ = std::move(failure);
      stopped_ = true;
    }
    turn_.notify_all();
    const std::lock_guard lock(reading_);
    finished_ = true;
  }

  ChunkReader& reader_;
  const HeaderRow& header_;
  const RowFormat& format_;
  const TakeResult& take_;

  std::mutex reading_;  // guards the reader and the next two
  bool finished_ = false;
  std::uint64_t fetched_ = 0;

  std::mutex delivery_;  // guards the taker and the next three
  std::condition_variable turn_;
  std::uint64_t delivered_ = 0;
  bool stopped_ = false;
  std::exception_ptr failure_;
};

}  // namespace

void ComputeStream(ChunkReader& reader, const HeaderRow& header, const RowFormat& format,
                   unsigned threads, const TakeResult& take) {
  Pipeline(reader, header, format, take).Run(threads);
}

}  // namespace Cohort
