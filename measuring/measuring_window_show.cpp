// From the draft to what the window shows, and what becomes of it.
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QSignalBlocker>
#include <QStatusBar>

#include "case/case_entries.h"
#include "diagram/case_diagram.h"
#include "measuring/measured_page.h"
#include "measuring/measured_texts.h"
#include "measuring/measuring_window.h"
#include "platform/picture_file.h"

namespace Measuring {

namespace {

// The texts of a table, where an interval is one cell.
QStringList ShownCells(const Print::UncertainRow& row) {
  QStringList cells = Print::CellsOf(row);
  cells.removeAt(2);  // u
  return cells;
}

QString Text(const std::string& text) {
  return Vse::OneLine(QString::fromStdString(text));
}

QString IsoText(const Radiography::Date& date) {
  if (!date) return {};
  return QDate(static_cast<int>(date->year()),
               static_cast<int>(static_cast<unsigned>(date->month())),
               static_cast<int>(static_cast<unsigned>(date->day())))
      .toString(Qt::ISODate);
}

std::optional<Sex> SexOf(Radiography::PatientSex sex) {
  if (sex == Radiography::PatientSex::Male) return Sex::Male;
  if (sex == Radiography::PatientSex::Female) return Sex::Female;
  return {};
}

}  // namespace

void MeasuringWindow::Refresh() {
  errors_ = CheckErrors(TypedErrors());
  if (picture_) {
    found_ = FindAll(facts_, draft_, errors_, points_, needs_.locale);
    view_->ShowMarks(draft_.points, Circles());
  }
  ShowScale();
  ShowFindings();
  ShowDiagram();
  ShowBudget();
  ShowErrorFaults();
  EnableCommands();
}

ErrorTexts MeasuringWindow::TypedErrors() const {
  ErrorTexts texts;
  for (std::size_t i = 0; i < kErrorCount; ++i) texts[i] = controls_.errors[i].box->text();
  return texts;
}

// What undo has taken back or kept work brought.
void MeasuringWindow::ShowDraft() {
  for (std::size_t i = 0; i < kEntryCount; ++i) {
    QLineEdit& box = *controls_.entries[i].box;
    if (box.text() != draft_.entries[i]) box.setText(draft_.entries[i]);
  }
  const QSignalBlocker quiet(controls_.side);
  const SideChoice choice = !draft_.side                    ? SideChoice::AsFileSays
                            : *draft_.side == HipSide::Left ? SideChoice::Left
                                                            : SideChoice::Right;
  controls_.side->setCurrentIndex(static_cast<int>(choice));
}

CirclesOnPicture MeasuringWindow::Circles() const {
  const Landmarks::PixelSpacing spacing = facts_.Spacing();
  CirclesOnPicture circles;
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    if (!found_.circles[i]) continue;
    const Landmarks::Circle& circle = found_.circles[i]->circle;
    circles[i] = CircleOnPicture{Landmarks::InPixels(circle.centre, spacing),
                                 circle.radius / spacing.column, circle.radius / spacing.row};
  }
  return circles;
}

void MeasuringWindow::ShowScale() {
  const ScaleFinding& scale = found_.scale;
  controls_.scaleName->setText(picture_ ? scale.name : QStringLiteral("No radiograph yet"));
  controls_.scaleValue->setText(scale.value);
  controls_.scaleValue->setVisible(!scale.value.isEmpty());
  controls_.scaleTodo->setText((QStringList(scale.todo) + scale.notes).join(u'\n').trimmed());
  controls_.scaleTodo->setVisible(!controls_.scaleTodo->text().isEmpty());
  for (std::size_t i = IndexOf(Entry::Magnification); i <= IndexOf(Entry::LineLength); ++i) {
    controls_.entries[i].SetVisible(scale.asks[i]);
  }
  // Of no use beside an object, unless it is wrong: then there are no intervals.
  constexpr std::size_t kError = IndexOf(ErrorOf::Magnification);
  controls_.errors[kError].SetVisible(!scale.isByObject || errors_.isWrong[kError]);
}

void MeasuringWindow::ShowFindings() {
  controls_.marks->Show(MarkCells(draft_));
  controls_.sideFound->setText(picture_ ? SideText(found_) : QString());
  controls_.measurements->Show(MeasurementCells(found_));
  std::vector<QStringList> rows;
  for (const Print::UncertainRow& row : ResultRows(found_, needs_.locale)) {
    rows.push_back(ShownCells(row));
  }
  controls_.results->Show(rows);
  const QStringList notices = NoticesOf(found_);
  controls_.notice->setText(notices.join(u'\n'));
  controls_.notice->setVisible(!notices.isEmpty());
}

void MeasuringWindow::ShowDiagram() {
  Vizual::DiagramView& diagram = *controls_.diagram;
  diagram.Box().SetPicture({});
  diagram.Box().Cls();
  diagram.Labels() = {};
  diagram.setAccessibleDescription(QStringLiteral("Empty."));
  if (found_.record && found_.outcome == Sila::HipOutcome::Ok) {
    const CaseRecord& record = *found_.record;
    Vizual::DrawCaseDiagram(record, !record.data.weightUnknown(), diagram.Screen());
    diagram.setAccessibleDescription(Vizual::DiagramWords(record, needs_.locale));
  }
  diagram.update();
}

// Rows are results: the only one that can be missing is the last.
void MeasuringWindow::ShowBudget() {
  const int row = controls_.results->ChosenRow();
  const Sila::Result chosen =
      row < 0 ? Sila::Result::PmaxWb : Sila::kResults[static_cast<std::size_t>(row)].id;
  const std::string_view caption = Sila::RowOf(chosen).caption;
  const QString title = QStringLiteral("Budget of ") + QString::fromUtf8(caption);
  controls_.budgetTitle->setText(title);
  controls_.budget->setAccessibleName(title);
  controls_.budget->Show(found_.budget[Sila::IndexOf(chosen)]);
}

void MeasuringWindow::ShowErrorFaults() {
  for (std::size_t i = 0; i < kErrorCount; ++i) {
    const QString fault = errors_.isWrong[i] ? kWrongError.toString() : kErrors[i].unit.toString();
    controls_.errors[i].unit->setText(fault);
    controls_.errors[i].box->setAccessibleDescription(errors_.isWrong[i] ? fault : QString());
  }
}

void MeasuringWindow::ShowStatus() {
  cancelReading_->setEnabled(loader_.IsBusy());
  if (loader_.IsBusy()) {
    statusBar()->showMessage(QStringLiteral("Opening… Escape cancels."));
  } else {
    statusBar()->clearMessage();
  }
  if (!picture_) return;
  const Radiography::Window window = view_->ShownWindow();
  const auto whole = [](double number) { return QString::number(std::lround(number)); };
  viewLabel_->setText(
      QStringLiteral("Zoom %1 %   Window %2 / %3")
          .arg(whole(100.0 * view_->Zoom()), whole(window.centre), whole(window.width)));
}

void MeasuringWindow::ShowPointer(std::optional<Landmarks::PixelPlace> place) {
  if (!place) return pointerLabel_->clear();
  const std::optional<double> value = view_->ValueAt(*place);
  const QPoint pixel = PixelAt(*place, view_->PictureSize());
  pointerLabel_->setText(QStringLiteral("%1, %2: %3")
                             .arg(pixel.x())
                             .arg(pixel.y())
                             .arg(value ? std::lround(*value) : 0));
}

void MeasuringWindow::EnableCommands() {
  for (QAction* action : std::as_const(pictureCommands_)) action->setEnabled(picture_ != nullptr);
  presets_->setEnabled(picture_ != nullptr);
  controls_.use->setEnabled(found_.HasMeasurement());
  controls_.savePicture->setEnabled(picture_ != nullptr);
}

void MeasuringWindow::KeepErrors() {
  const QString trouble = needs_.settings.Keep(kErrorSection, ToJson(TypedErrors()));
  if (trouble.isEmpty()) return;
  statusBar()->showMessage(QStringLiteral("These entries cannot be kept for the next start: ") +
                           trouble);
}

CaseEntries MeasuringWindow::EntriesForForm() const {
  CaseEntries entries = found_.entries;
  const Radiography::Patient& patient = picture_->patient;
  entries.surname = Text(patient.familyName);
  entries.firstName = Text(patient.givenName);
  entries.dateOfBirth = IsoText(patient.birth);
  entries.sex = SexOf(patient.sex);
  return entries;
}

void MeasuringWindow::UseThese() {
  if (!picture_ || !found_.HasMeasurement()) return;
  handedOver_ = draft_;
  needs_.use(EntriesForForm());
}

void MeasuringWindow::CopyTable() {
  QGuiApplication::clipboard()->setText(MeasuredTable(found_, needs_.locale));
}

void MeasuringWindow::SavePicture() {
  if (!picture_) return;
  const QString name = QFileInfo(path_).completeBaseName() + QStringLiteral("-marked.png");
  const QString path = needs_.files.AskSaveFileName(this, QStringLiteral("Picture (*.png)|*.png"),
                                                    QStringLiteral("png"), name);
  if (path.isEmpty()) return;
  const QString trouble = WriteMarkedPicture(path);
  if (!trouble.isEmpty()) needs_.messages.ShowError(this, trouble, QStringLiteral("Error"));
}

// What went wrong, for the user. The radiograph itself is never changed.
QString MeasuringWindow::WriteMarkedPicture(const QString& path) const {
  if (QFileInfo::exists(path) && QFileInfo(path) == QFileInfo(path_)) {
    return QStringLiteral("%1 is the radiograph itself. Choose another name.").arg(path);
  }
  const QImage image = PictureWithNumbers(Page());
  if (image.isNull()) return QStringLiteral("%1: there is not enough memory").arg(path);
  return WritePictureFile(image, path, "png");
}

MeasuredPage MeasuringWindow::Page() const {
  return {view_->PictureWithMarks(), EntriesForForm(), found_, QFileInfo(path_).fileName(),
          needs_.locale};
}

void MeasuringWindow::PrintPage() {
  if (!picture_) return;
  const MeasuredPage page = Page();
  if (page.picture.isNull()) {
    return needs_.messages.ShowError(
        this, QStringLiteral("There is not enough memory to print the radiograph."),
        QStringLiteral("Error"));
  }
  const std::unique_ptr<PrintTarget> target =
      needs_.printers.AskPrinter(this, kMeasuredTitle.toString(), needs_.locale);
  if (!target) return;
  const QString trouble = PrintMeasured(*target, page, needs_.today());
  if (!trouble.isEmpty()) needs_.messages.ShowError(this, trouble, QStringLiteral("Error"));
}

}  // namespace Measuring
