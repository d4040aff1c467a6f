// Qt's print dialog; the only place that uses it.
#include "platform/print_dialog.h"

#include <QAbstractPrintDialog>
#include <QLineEdit>
#include <QMarginsF>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
#include <array>

QPageLayout UsualPage(const QLocale& locale) {
  // Where paper is Letter, by the Unicode locale data.
  constexpr std::array kLetterCountries = {
      QLocale::Belize,       QLocale::Canada,     QLocale::Chile,       QLocale::Colombia,
      QLocale::CostaRica,    QLocale::ElSalvador, QLocale::Guatemala,   QLocale::Mexico,
      QLocale::Nicaragua,    QLocale::Panama,     QLocale::Philippines, QLocale::PuertoRico,
      QLocale::UnitedStates, QLocale::Venezuela};
  const bool letter = std::find(kLetterCountries.begin(), kLetterCountries.end(),
                                locale.territory()) != kLetterCountries.end();
  return {QPageSize(letter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait,
          QMarginsF()};
}

namespace {

// The dialog does not propose a name itself on every desktop.
void ProposeFileName(const QPrintDialog& dialog, const QString& title) {
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
  if (name == nullptr || !name->text().endsWith(u'/')) return;
  name->setText(name->text() + title + QStringLiteral(".pdf"));
}

}  // namespace

std::unique_ptr<PrintTarget> SystemPrintDialog::AskPrinter(QWidget* parent, const QString& title,
                                                           const QLocale& locale) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setDocName(title);
  printer->setCreator(title);
  printer->setFullPage(true);
  printer->setPageSize(UsualPage(locale).pageSize());
  printer->setPageOrientation(QPageLayout::Portrait);
  QPrintDialog dialog(printer.get(), parent);
  // A report is printed as a whole.
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  ProposeFileName(dialog, title);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  if (printer->outputFormat() == QPrinter::PdfFormat) {
    return std::make_unique<PdfTarget>(printer->outputFileName(), title, printer->pageLayout());
  }
  return std::make_unique<PrinterTarget>(std::move(printer));
}
