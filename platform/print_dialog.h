// The one door through which the user is asked for a printer. Tests stand their own here and give a
// PDF file.
#pragma once

#include <QLocale>
#include <QPageLayout>
#include <QString>
#include <memory>

#include "platform/print_target.h"

class QWidget;

// Upright paper of the size in use where the locale is spoken: Letter or A4.
QPageLayout UsualPage(const QLocale& locale);

class PrintDialog {
 public:
  PrintDialog() = default;
  PrintDialog(const PrintDialog&) = delete;
  PrintDialog& operator=(const PrintDialog&) = delete;
  virtual ~PrintDialog() = default;

  // Where the document with this title shall go; nothing when the user has changed their mind.
  // `locale` says which paper is laid out first.
  virtual std::unique_ptr<PrintTarget> AskPrinter(QWidget* parent, const QString& title,
                                                  const QLocale& locale) = 0;
};

// The door that people see: the toolkit's print dialog. It offers the printers of the system and a
// PDF file, and the file alone where there is no printer.
class SystemPrintDialog final : public PrintDialog {
 public:
  std::unique_ptr<PrintTarget> AskPrinter(QWidget* parent, const QString& title,
                                          const QLocale& locale) override;
};
