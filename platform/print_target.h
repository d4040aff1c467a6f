// Where a printed document goes: to a printer of the system or to a PDF file.
#pragma once

#include <QBuffer>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <QPrinter>
#include <QString>
#include <memory>

class PrintTarget {
 public:
  PrintTarget() = default;
  PrintTarget(const PrintTarget&) = delete;
  PrintTarget& operator=(const PrintTarget&) = delete;
  virtual ~PrintTarget() = default;

  // What the document is painted on. Its origin is the corner of the paper.
  virtual QPagedPaintDevice& Device() = 0;

  // Why the device cannot be painted on; empty when it can.
  virtual QString Check() = 0;

  // Brings the painted document to its place; nothing may paint any more. Gives what went wrong,
  // empty when the document has arrived whole.
  virtual QString Deliver() = 0;

  // Names the target and the reason, for the user.
  virtual QString Refusal(const QString& reason) const = 0;
};

// A PDF file. It is made in memory and takes its place in one step: whatever goes wrong, no half of
// a document is left and a file that was there before stays.
class PdfTarget final : public PrintTarget {
 public:
  // `title` is the document's title and all that it says of itself.
  PdfTarget(QString path, const QString& title, const QPageLayout& layout);
  ~PdfTarget() override = default;
  PdfTarget(const PdfTarget&) = delete;
  PdfTarget& operator=(const PdfTarget&) = delete;

  QPagedPaintDevice& Device() override { return writer_; }
  QString Check() override { return {}; }
  QString Deliver() override;
  QString Refusal(const QString& reason) const override;

 private:
  QString path_;
  QBuffer document_;
  QPdfWriter writer_;
};

// A printer of the system.
class PrinterTarget final : public PrintTarget {
 public:
  // The printer bears its paper, its options and the document's name.
  explicit PrinterTarget(std::unique_ptr<QPrinter> printer);

  QPagedPaintDevice& Device() override { return *printer_; }
  QString Check() override;
  QString Deliver() override;
  QString Refusal(const QString& reason) const override;

 private:
  std::unique_ptr<QPrinter> printer_;
};
