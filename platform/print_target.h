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

  // Why the device cannot be painted on; empty if it can.
  virtual QString Check() = 0;

  // Delivers the painted document; nothing may be painted afterwards. Returns what went wrong;
  // empty when the whole document has arrived.
  virtual QString Deliver() = 0;

  // Names the target and the reason, for the user.
  virtual QString Refusal(const QString& reason) const = 0;
};

// A PDF file. It is made in memory and written in one step: whatever goes wrong, no partial
// document is left and an existing file stays.
class PdfTarget final : public PrintTarget {
 public:
  // `title` is the document's title and its only metadata.
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
  // The printer already has its paper, its options and the document's name.
  explicit PrinterTarget(std::unique_ptr<QPrinter> printer);

  QPagedPaintDevice& Device() override { return *printer_; }
  QString Check() override;
  QString Deliver() override;
  QString Refusal(const QString& reason) const override;

 private:
  std::unique_ptr<QPrinter> printer_;
};
