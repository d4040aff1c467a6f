// The one door through which the user is asked for a printer. Tests put their own here and give a
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

  // Where the document with this title is to go; nothing if the user has changed their mind.
  // `locale` says which paper is preset.
  virtual std::unique_ptr<PrintTarget> AskPrinter(QWidget* parent, const QString& title,
                                                  const QLocale& locale) = 0;
};

// The door that people see: Qt's print dialog. It offers the printers of the system and a
// PDF file, and the file alone where there is no printer.
class SystemPrintDialog final : public PrintDialog {
 public:
  std::unique_ptr<PrintTarget> AskPrinter(QWidget* parent, const QString& title,
                                          const QLocale& locale) override;
};
