// What is wrong with the fields of a row, gathered for its status.
#pragma once

#include <string>
#include <string_view>

namespace Cohort {

class Complaints {
 public:
  void Add(std::string_view column, std::string_view what) {
    text_ += text_.empty() ? "error: " : " and ";
    text_ += column;
    text_ += ' ';
    text_ += what;
  }

  // Empty when nothing is wrong.
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace Cohort
