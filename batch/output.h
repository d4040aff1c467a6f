// Where the results go.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace Cohort {

// Every function throws CohortError, with a sentence that names the target, when it fails.
class TextSink {
 public:
  TextSink() = default;
  TextSink(const TextSink&) = delete;
  TextSink& operator=(const TextSink&) = delete;
  virtual ~TextSink() = default;

  virtual void Write(std::string_view text) = 0;

  // To be called once, after the last Write. A sink destroyed without it leaves no file behind.
  virtual void Finish() = 0;
};

// Whether an output of this path is what standard output is.
bool IsStandardOutput(const std::string& path);

// Standard output for "-". A regular file, new or there already, appears whole when it is finished
// and keeps its former content until then; a device or a pipe is written as it comes,
// a terminal without control characters in the text.
std::unique_ptr<TextSink> OpenOutput(const std::string& path);

}  // namespace Cohort
