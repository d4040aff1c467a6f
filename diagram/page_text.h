// The text cursor of a printed page, as far as the diagram needs it. The report's page is one.
#pragma once

#include <QString>

class PageText {
 public:
  PageText() = default;
  PageText(const PageText&) = delete;
  PageText& operator=(const PageText&) = delete;
  virtual ~PageText() = default;

  virtual void SetCurrentX(double x) = 0;  // twips from the left of the page
  virtual void SetCurrentY(double y) = 0;  // twips from the top
  virtual void SetFontSize(int points) = 0;
  // At the current place; the place then moves on to the next line.
  virtual void Print(const QString& text) = 0;
};
