// The body of the report.
#include "report/report.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRectF>

#include "case/date_text.h"
#include "case/number_text.h"
#include "diagram/case_diagram.h"
#include "diagram/page_text.h"
#include "platform/picture_box.h"
#include "report/comments.h"

namespace {

using Print::Case;
using Print::Sheet;

// The pointer is put back however the report ends.
class HourglassPointer {
 public:
  HourglassPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;
  ~HourglassPointer() { QGuiApplication::restoreOverrideCursor(); }
};

// The page as the diagram sees it.
class DiagramTexts final : public PageText {
 public:
  explicit DiagramTexts(PrinterPage& page) : page_(page) {}
  void SetCurrentX(double x) override { page_.SetCurrentX(x); }
  void SetCurrentY(double y) override { page_.SetCurrentY(y); }
  void SetFontSize(int points) override { page_.SetFontSize(points); }
  void Print(const QString& text) override { page_.Print(text); }

 private:
  PrinterPage& page_;
};

void PrintEmptyLines(PrinterPage& page, int count) {
  for (int i = 0; i < count; ++i) page.Print({});
}

void PrintPatientLine(PrinterPage& page, QString left, const QString& leftValue, QString right,
                      const QString& rightValue) {
  Print::PrintTwoColumns(page, left, right, leftValue, rightValue);
}

void PrintMeasureLine(PrinterPage& page, QString right, const QString& rightValue) {
  QString left = QStringLiteral(" ");
  Print::PrintRightColumn(page, left, right, {}, rightValue);
}

void PrintPatientAndGeometry(PrinterPage& page, const Case& printed) {
  const PatientTexts& patient = printed.record.patient;
  const Geometry& g = printed.record.geometry;
  const auto text = [&](double value) { return Vse::NumberText(value, printed.locale); };
  const auto cm = [&](double value) { return text(value) + QStringLiteral(" cm"); };
  const auto degrees = [&](double radians) {
    return text(Vse::RadiansToDegrees(radians)) + QStringLiteral(" °  ");
  };
  PrintPatientLine(page, "Name", patient.name, "lizm", cm(g.lizm));
  PrintPatientLine(page, "Sex", patient.sex, "xizm", cm(g.xizm));
  PrintPatientLine(page, "Date of birth", patient.dateOfBirth, "zizm", cm(g.zizm));
  PrintPatientLine(page, "Body weight", patient.bodyWeight + " kg", "Hizm", cm(g.Hizm));
  PrintPatientLine(page, "Hip", patient.hip, "Cizm", cm(g.Cizm));
  PrintMeasureLine(page, "zasuk", degrees(g.zasuk));
  PrintMeasureLine(page, "Theta-CE", degrees(g.thetaCE));
  PrintMeasureLine(page, "Radius of head", text(g.headRadius) + " m");
}

// The peak stress is printed when the panel shows it, and never while the body weight is unknown.
bool IsAbsolute(const Case& printed) {
  return printed.results.pmax && !printed.record.weightUnknown;
}

void PrintResultLine(const Sheet& sheet, const QString& text) {
  PrinterPage& page = sheet.page;
  if (page.CurrentY() + page.TextHeight() > Print::BottomOf(page)) Print::TurnPage(sheet);
  page.Print(text);
  PrintEmptyLines(page, 1);
}

// Behind "Pmax =" are two blanks. Deliberate.
void PrintResults(const Sheet& sheet, const Case& printed) {
  const ResultTexts& results = printed.results;
  PrintResultLine(sheet, "Theta-R = " + results.thetaR + Vse::kDegreeCaption.toString());
  PrintResultLine(sheet, "Theta-pol = " + results.thetaPol + Vse::kDegreeCaption.toString());
  PrintResultLine(sheet, "R/Wb = " + results.rWb);
  PrintResultLine(sheet, "Pmax/Wb = " + results.pmaxWb + Vse::kPmaxWbCaption.toString());
  if (!IsAbsolute(printed)) return;
  PrintResultLine(sheet, "Pmax =  " + *printed.results.pmax + Vse::kPmaxCaption.toString());
}

// On a picture of its own, so that the one on screen stays as it is. The printed texts stand at
// the picture's own units as twips while its strokes are scaled to a third of the paper's width:
// they do not meet. Deliberate.
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
  DiagramTexts texts(page);
  Vizual::DrawCaseDiagram(printed.record, IsAbsolute(printed),
                          Vizual::Target::Printer(box, labels, texts), diagramX, diagramY);
  const double width = height * box.Size().width() / box.Size().height();
  page.PaintPicture(box.Image(), QRectF(diagramX, diagramY, width, height));
}

}  // namespace

QString Print::PrintReport(const Sheet& sheet, const Case& printed) {
  const HourglassPointer hourglass;
  PrinterPage& page = sheet.page;
  page.SetFontSize(10);
  PrintEmptyLines(page, 1);
  PrintPatientAndGeometry(page, printed);
  PrintEmptyLines(page, 1);
  PrintComments(sheet, "Comments : " + printed.record.patient.comments);
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
