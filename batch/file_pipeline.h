// Several workers over one stream of records, results in the stream's order.
#pragma once

#include <functional>

#include "batch/chunk_computer.h"
#include "batch/chunk_reader.h"
#include "batch/header_row.h"

namespace Cohort {

// Takes the chunks' results one at a time, in their order, whatever thread they come from.
using TakeResult = std::function<void(const ChunkResult&)>;

// Computes everything that `reader` still holds, in as many threads as the system gives, `threads`
// at most. No more than one chunk a thread is in memory.
// Trouble in reading arrives as a result with `trouble` set, in its turn. Whatever `take` throws
// ends the run and is thrown to the caller.
void ComputeStream(ChunkReader& reader, const HeaderRow& header, const RowFormat& format,
                   unsigned threads, const TakeResult& take);

}  // namespace Cohort
