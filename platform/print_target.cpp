// Delivery of a printed document.
#include "platform/print_target.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QMarginsF>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "storage/whole_file.h"

namespace {

constexpr int kDotsPerInch = 1200;

QString WriteFile(const QString& path, const QByteArray& bytes) {
  const QFileInfo there(path);
  if (there.exists() && !there.isFile()) return QStringLiteral("not a file");
  return WriteWholeFile(path, bytes);
}

// Qt sends the document to the print system and ignores the answer. The print system's library
// keeps the last answer; it is loaded whenever there is a printer. It is looked up by name and not
// linked, so that the program also starts where there is no print system.
QString LastSpoolError() {
  constexpr int kFirstError = 0x400;  // lower codes mean success
  using Code = int (*)();
  using Text = const char* (*)();
  QLibrary library(QStringLiteral("cups"), 2);
  const auto code = reinterpret_cast<Code>(library.resolve("cupsLastError"));
  const auto text = reinterpret_cast<Text>(library.resolve("cupsLastErrorString"));
  if (code == nullptr || text == nullptr || code() < kFirstError) return {};
  return QString::fromUtf8(text());
}

}  // namespace

PdfTarget::PdfTarget(QString path, const QString& title, const QPageLayout& layout)
    : path_(std::move(path)), writer_(&document_) {
  document_.open(QIODevice::WriteOnly);
  QPageLayout wholePaper = layout;
  wholePaper.setMode(QPageLayout::FullPageMode);
  wholePaper.setMargins(QMarginsF());
  writer_.setPageLayout(wholePaper);
  writer_.setResolution(kDotsPerInch);
  writer_.setTitle(title);
  writer_.setCreator(title);
}

QString PdfTarget::Deliver() {
  const QString reason = WriteFile(path_, document_.data());
  return reason.isEmpty() ? QString() : Refusal(reason);
}

QString PdfTarget::Refusal(const QString& reason) const {
  return QStringLiteral("%1 could not be written: %2").arg(QDir::toNativeSeparators(path_), reason);
}

PrinterTarget::PrinterTarget(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
  printer_->setFullPage(true);
}

// The document waits in the temporary folder until it is sent. A write that fails there would go
// unnoticed.
QString PrinterTarget::Check() {
  constexpr auto kRoom = std::uintmax_t{16} << 20;  // bytes; the longest report takes a small part
  if (!printer_->isValid()) return Refusal(QStringLiteral("there is no such printer"));
  // If the free space is unknown, printing is tried.
  std::error_code unknown;
  const auto space = std::filesystem::space(QDir::tempPath().toStdString(), unknown);
  if (!unknown && space.available < kRoom) {
    return Refusal(QStringLiteral("no space left in %1").arg(QDir::tempPath()));
  }
  return {};
}

QString PrinterTarget::Deliver() {
  const QString reason = LastSpoolError();
  return reason.isEmpty() ? QString() : Refusal(reason);
}

QString PrinterTarget::Refusal(const QString& reason) const {
  return QStringLiteral("Printer %1 cannot print: %2").arg(printer_->printerName(), reason);
}
