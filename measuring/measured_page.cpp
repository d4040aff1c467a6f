#include "measuring/measured_page.h"

#include <QPainter>
#include <algorithm>

#include "case/case_conversion.h"
#include "case/case_texts.h"
#include "case/date_text.h"
#include "measuring/measured_texts.h"
#include "report/comments.h"
#include "report/sheet.h"

namespace Measuring {

namespace {

using Print::Sheet;

// Twips from the paper's edge.
constexpr double kValueEnd = 5200.0;
constexpr double kLowEnd = 7700.0;
constexpr double kHighEnd = 9700.0;

void PrintCell(PrinterPage& page, const QString& text, double end) {
  page.SetCurrentX(end - page.TextWidth(text));
  page.PrintWithoutFeed(text);
}

void PrintPatient(PrinterPage& page, const MeasuredPage& printed) {
  const PatientTexts patient =
      Vse::PatientTextsOf(Vse::PatientOf(printed.entries, printed.entries.bodyWeight.isEmpty()));
  const auto two = [&](QString left, const QString& leftValue, QString right,
                       const QString& rightValue) {
    Print::PrintTwoColumns(page, left, right, leftValue, rightValue);
  };
  two(QStringLiteral("Name"), patient.name, QStringLiteral("Hip"), patient.hip);
  two(QStringLiteral("Date of birth"), patient.dateOfBirth, QStringLiteral("Body weight"),
      patient.bodyWeight + QStringLiteral(" kg"));
  two(QStringLiteral("Radiograph"), printed.file, QStringLiteral("Rotation"),
      printed.entries[Sila::Measurement::Zasuk].text + QStringLiteral("°"));
}

void PrintNumbers(PrinterPage& page, const MeasuredPage& printed) {
  for (const QStringList& cells : MeasurementCells(printed.found)) {
    page.PrintWithoutFeed(cells[0]);
    PrintCell(page, cells[1], kValueEnd);
    page.LineFeed();
  }
  page.LineFeed();
  const QString title = Print::IntervalTitle(Uncertainty::Settings{}.coverage, printed.locale);
  page.PrintWithoutFeed(QStringLiteral("Result"));
  PrintCell(page, QStringLiteral("Value"), kValueEnd);
  PrintCell(page, title + QStringLiteral(" from"), kLowEnd);
  PrintCell(page, QStringLiteral("to"), kHighEnd);
  page.LineFeed();
  for (const Print::UncertainRow& row : ResultRows(printed.found, printed.locale)) {
    page.PrintWithoutFeed(Print::CellsOf(row)[0]);
    PrintCell(page, row.texts.estimate, kValueEnd);
    PrintCell(page, row.texts.low, kLowEnd);
    PrintCell(page, row.texts.high, kHighEnd);
    page.LineFeed();
  }
}

// As large as the rest of the page allows.
void PrintPicture(PrinterPage& page, const QImage& picture) {
  const QSizeF room(page.ScaleWidth() - Print::kLeftMargin - Print::kRightMargin,
                    Print::BottomOf(page) - page.CurrentY());
  if (room.height() <= 0.0) return;
  const QSizeF size = QSizeF(picture.size()).scaled(room, Qt::KeepAspectRatio);
  page.PaintImage(picture, {QPointF(Print::kLeftMargin, page.CurrentY()), size});
}

}  // namespace

QString PrintMeasured(PrintTarget& target, const MeasuredPage& printed, QDate date) {
  PrinterPage page(target);
  page.SetFontName(QStringLiteral("Times New Roman"));
  const Sheet sheet{page, Vse::ShortDate(date, printed.locale)};
  Print::PrintPageHeader(sheet, QStringLiteral("TELMARION"));
  page.Print(QStringLiteral("Measured on a radiograph"));
  page.SetFontSize(10);
  page.LineFeed();
  PrintPatient(page, printed);
  page.LineFeed();
  PrintNumbers(page, printed);
  page.LineFeed();
  const ScaleFinding& scale = printed.found.scale;
  const QString value = scale.value.isEmpty() ? QString() : QStringLiteral(". ") + scale.value;
  const QStringList ending = QStringList(QStringLiteral("Scale: ") + scale.name + value)
                             << NoticesOf(printed.found) << Print::kUncertaintyNote.toString();
  Print::PrintComments(sheet, ending.join(u'\n'));
  page.LineFeed();
  page.LineFeed();
  PrintPicture(page, printed.picture);
  return page.EndDocument();
}

QImage PictureWithNumbers(const MeasuredPage& page) {
  if (page.picture.isNull()) return {};
  QFont font = QFont();
  font.setPixelSize(std::max(12, page.picture.width() / 80));
  const QFontMetrics metrics(font);
  const int margin = metrics.height() / 2;
  const QRect room(margin, 0, page.picture.width() - 2 * margin, page.picture.height());
  const QString text = NumberLines(page.file, page.found, page.locale).join(u'\n');
  const int height = metrics.boundingRect(room, Qt::TextWordWrap, text).height() + 2 * margin;
  QImage image(page.picture.width(), page.picture.height() + height, QImage::Format_RGB32);
  if (image.isNull()) return {};
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.drawImage(0, 0, page.picture);
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(QRect(margin, page.picture.height() + margin, room.width(), height),
                   Qt::TextWordWrap, text);
  return image;
}

}  // namespace Measuring
