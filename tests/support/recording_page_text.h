// A page for tests that writes down what is printed, where and how large.
#pragma once

#include <QString>
#include <vector>

#include "diagram/page_text.h"

struct PrintedText {
  QString text;
  double x = 0.0;
  double y = 0.0;
  int fontSize = 0;
};

class RecordingPageText final : public PageText {
 public:
  explicit RecordingPageText(int fontSize) : fontSize_(fontSize) {}

  void SetCurrentX(double x) override { x_ = x; }
  void SetCurrentY(double y) override { y_ = y; }
  void SetFontSize(int points) override { fontSize_ = points; }
  void Print(const QString& text) override { printed_.push_back({text, x_, y_, fontSize_}); }

  const std::vector<PrintedText>& Printed() const { return printed_; }
  int FontSize() const { return fontSize_; }

 private:
  double x_ = 0.0;
  double y_ = 0.0;
  int fontSize_;
  std::vector<PrintedText> printed_;
};
