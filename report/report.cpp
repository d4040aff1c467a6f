// The body of the report.
#include "report/report.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRectF>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "case/case_places.h"
#include "case/case_texts.h"
#include "case/date_text.h"
#include "diagram/case_diagram.h"
#include "platform/picture_box.h"
#include "report/comments.h"

namespace {

using Print::Case;
using Print::Sheet;

// The pointer is restored however the report ends.
class HourglassPointer {
 public:
  HourglassPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;
  ~HourglassPointer() { QGuiApplication::restoreOverrideCursor(); }
};

void PrintEmptyLines(PrinterPage& page, int count) {
  for (int i = 0; i < count; ++i) page.Print({});
}

void PrintPatientLine(PrinterPage& page, QString left, const QString& leftValue, QString right,
                      const QString& rightValue) {
  Print::PrintTwoColumns(page, left, right, leftValue, rightValue);
}

void PrintMeasurementLine(PrinterPage& page, QString right, const QString& rightValue) {
  QString left = QStringLiteral(" ");
  Print::PrintRightColumn(page, left, right, {}, rightValue);
}

// What is printed to the right of the patient's lines; the other measurements follow below. H comes
// before C. Deliberate.
constexpr std::array kBesideThePatient = {Sila::Measurement::Lizm, Sila::Measurement::Xizm,
                                          Sila::Measurement::Zizm, Sila::Measurement::Hizm,
                                          Sila::Measurement::Cizm};

bool IsBesideThePatient(Sila::Measurement id) {
  return std::find(kBesideThePatient.begin(), kBesideThePatient.end(), id) !=
         kBesideThePatient.end();
}

QString LabelOf(Sila::Measurement id) {
  return Vse::kMeasurementPlaces[Sila::IndexOf(id)].printLabel.toString();
}

// The value with its unit. An angle's unit is followed by blanks, a radius's is not.
QString ValueOf(Sila::Measurement id, const Case& printed) {
  const Sila::MeasurementRow& row = Sila::RowOf(id);
  QString unit = Vse::FileSuffix(row.kind()).toString();
  if (row.kind() == Sila::Kind::Radius) unit.chop(1);
  return Vse::MeasurementText(printed.record.data.inputs, row, printed.locale) + unit;
}

void PrintPatientAndMeasurements(PrinterPage& page, const Case& printed) {
  const PatientTexts patient = Vse::PatientTextsOf(printed.record.data.patient);
  const std::array<std::pair<const char*, QString>, kBesideThePatient.size()> lines = {
      {{"Name", patient.name},
       {"Sex", patient.sex},
       {"Date of birth", patient.dateOfBirth},
       {"Body weight", patient.bodyWeight + " kg"},
       {"Hip", patient.hip}}};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Sila::Measurement id = kBesideThePatient[i];
    PrintPatientLine(page, lines[i].first, lines[i].second, LabelOf(id), ValueOf(id, printed));
  }
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    if (IsBesideThePatient(row.id)) continue;
    PrintMeasurementLine(page, LabelOf(row.id), ValueOf(row.id, printed));
  }
}

// The peak stress is printed when the panel shows it, and never while the body weight is unknown.
bool IsAbsolute(const Case& printed) {
  return !printed.results[Sila::Result::Pmax].isEmpty() && !printed.record.data.weightUnknown();
}

void PrintResultLine(const Sheet& sheet, const QString& text) {
  PrinterPage& page = sheet.page;
  if (page.CurrentY() + page.TextHeight() > Print::BottomOf(page)) Print::TurnPage(sheet);
  page.Print(text);
  PrintEmptyLines(page, 1);
}

bool IsAngle(const Sila::ResultRow& row) {
  return row.unit == "°";
}

// The angles come before the force and the stresses.
void PrintResults(const Sheet& sheet, const Case& printed) {
  std::array rows = Sila::kResults;
  std::stable_partition(rows.begin(), rows.end(), IsAngle);
  for (const Sila::ResultRow& row : rows) {
    if (row.needsWeight && !IsAbsolute(printed)) continue;
    const QStringView label = Vse::kResultPlaces[Sila::IndexOf(row.id)].printLabel;
    PrintResultLine(sheet, label.toString() + printed.results[row.id] + Vse::UnitCaption(row.id));
  }
}

void PrintAt(PrinterPage& page, const Vizual::PrintedText& text) {
  page.SetFontSize(text.fontSize);
  page.SetCurrentX(text.x);
  page.SetCurrentY(text.y);
  page.Print(text.text);
}

// On a picture of its own, so that the one on screen stays as it is. The printed texts are placed
// at the picture's own units as twips, while its strokes are scaled to a third of the paper's
// width: they do not meet. Deliberate.
void PrintDiagram(const Sheet& sheet, const Case& printed) {
  PrinterPage& page = sheet.page;
  const double height = page.ScaleWidth() / 3.0;
  if (page.CurrentY() + height > Print::BottomOf(page)) Print::TurnPage(sheet);
  const double diagramX = page.ScaleWidth() / 5.0;
  const double diagramY = page.CurrentY();

  PictureBox box;
  box.SetDrawStyle(LineStyle::Solid);
  box.SetBackColor(kWhite);
  Vizual::DiagramLabels labels;
  labels.leftHip.backColor = labels.rightHip.backColor = kWhite;
  std::vector<Vizual::PrintedText> texts;
  Vizual::DrawCaseDiagram(printed.record, IsAbsolute(printed),
                          Vizual::Target::Printer(box, labels, texts), diagramX, diagramY);
  for (const Vizual::PrintedText& text : texts) PrintAt(page, text);
  const double width = height * box.Size().width() / box.Size().height();
  page.PaintPicture(box.Image(), QRectF(diagramX, diagramY, width, height));
}

}  // namespace

QString Print::PrintReport(const Sheet& sheet, const Case& printed) {
  const HourglassPointer hourglass;
  PrinterPage& page = sheet.page;
  page.SetFontSize(10);
  PrintEmptyLines(page, 1);
  PrintPatientAndMeasurements(page, printed);
  PrintEmptyLines(page, 1);
  PrintComments(sheet, "Comments : " + Vse::PatientTextsOf(printed.record.data.patient).comments);
  page.Print("\n");
  PrintResults(sheet, printed);
  PrintEmptyLines(page, 5);
  PrintDiagram(sheet, printed);
  return page.EndDocument();
}

QString Print::PrintCase(PrintTarget& target, const Case& printed, QDate date) {
  PrinterPage page(target);
  page.SetFontName(QStringLiteral("Times New Roman"));
  const Sheet sheet{page, Vse::ShortDate(date, printed.locale)};
  PrintPageHeader(sheet, kTitle.toString());
  return PrintReport(sheet, printed);
}
