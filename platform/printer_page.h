// A printed document with a text cursor. Places and lengths are in twips (1/1440 inch) from the top
// left corner of the paper.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "platform/picture.h"
#include "platform/print_target.h"

class PrinterPage {
 public:
  // Opens the document at its first page. If the target cannot be painted on, nothing is printed
  // and EndDocument says so; until then everything can still be called.
  explicit PrinterPage(PrintTarget& target);
  PrinterPage(const PrinterPage&) = delete;
  PrinterPage& operator=(const PrinterPage&) = delete;
  ~PrinterPage() = default;

  // The paper.
  double ScaleWidth() const;
  double ScaleHeight() const;
  int PageNumber() const { return pageNumber_; }  // from 1

  // Where the next text goes: its top left corner.
  double CurrentX() const { return x_; }
  double CurrentY() const { return y_; }
  void SetCurrentX(double x) { x_ = x; }
  void SetCurrentY(double y) { y_ = y; }
  // Where a line feed takes x. At first the paper's edge.
  void SetLineStart(double x) { lineStart_ = x; }

  void SetFontName(const QString& family);
  int FontSize() const { return font_.pointSize(); }
  void SetFontSize(int points);
  double TextWidth(const QString& text) const;
  double TextHeight() const;  // of a line, the gap to the next one included

  // Print ends with a line feed; PrintWithoutFeed leaves the cursor after the text. A line feed
  // character in the text breaks the line. What lies beyond the paper is lost, and so is anything
  // below a full page: the caller turns the page.
  void Print(const QString& text);
  void PrintWithoutFeed(const QString& text);
  void LineFeed();

  // The whole picture, stretched over `target`, at the printer's own resolution. The picture's
  // ground is left out: the paper is white, and texts already there stay readable.
  void PaintPicture(const Picture& picture, const QRectF& target);

  // A photograph in grey or in colours, stretched over `target`.
  void PaintImage(const QImage& image, const QRectF& target);

  void NewPage();

  // Closes the document and delivers it to its target. Returns what went wrong, for the user; empty
  // when the whole document has arrived. Nothing may be printed afterwards.
  QString EndDocument();

 private:
  double Device(double twips) const { return twips * dotsPerTwip_; }
  QRectF Device(const QRectF& twips) const;
  void Refuse();

  PrintTarget& target_;
  double dotsPerTwip_;
  QFont font_;
  QFontMetricsF metrics_;
  QPainter painter_;
  QString error_;
  int pageNumber_ = 1;
  double x_ = 0.0;
  double y_ = 0.0;
  double lineStart_ = 0.0;
};
