// Boxes, captions and units of the two panels.
#include "app/panels.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <cctype>
#include <string>

#include "platform/length_units.h"

namespace {

// A box that can be read and copied from, named for tests and screen readers.
QLineEdit* MakeBox(const char* objectName, const char* caption) {
  auto* box = new QLineEdit;
  box->setObjectName(QString::fromUtf8(objectName));
  box->setAccessibleName(QString::fromUtf8(caption));
  box->setReadOnly(true);
  return box;
}

// A screen reader may be silent on the sign.
QString SpokenUnit(const char* unit) {
  return QString::fromUtf8(unit) == QStringLiteral("°") ? QStringLiteral("degrees")
                                                        : QString::fromUtf8(unit);
}

// Its caption is on the left, its unit on the right; both are in its accessible name.
QLabel* AddRow(QGridLayout* grid, int row, const char* caption, QWidget* box,
               const char* unit = nullptr) {
  auto* label = new QLabel(QString::fromUtf8(caption));
  label->setBuddy(box);
  grid->addWidget(label, row, 0);
  grid->addWidget(box, row, 1);
  if (unit == nullptr) return nullptr;
  box->setAccessibleName(box->accessibleName() + QStringLiteral(" in ") + SpokenUnit(unit));
  auto* unitLabel = new QLabel(QString::fromUtf8(unit));
  grid->addWidget(unitLabel, row, 2);
  return unitLabel;
}

QGridLayout* MakeGrid(QWidget* panel) {
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(kGrid, kGrid, kGrid, kGrid);
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(kGrid / 2);
  grid->setColumnStretch(1, 1);
  // The boxes of both panels are aligned below each other.
  const QFontMetrics metrics(panel->font());
  grid->setColumnMinimumWidth(0, metrics.horizontalAdvance(QStringLiteral("Date of birth")));
  grid->setColumnMinimumWidth(2, metrics.horizontalAdvance(QStringLiteral("m^-2")));
  return grid;
}

void ShowFromStart(QLineEdit* box, const QString& text) {
  box->setText(text);
  box->setCursorPosition(0);
}

QLineEdit* MakeNumberBox(const char* objectName, const char* caption) {
  QLineEdit* box = MakeBox(objectName, caption);
  box->setAlignment(Qt::AlignRight);
  return box;
}

}  // namespace

PatientPanel::PatientPanel(QWidget* parent)
    : QGroupBox(QStringLiteral("Patient"), parent),
      name_(MakeBox("txtName", "Name")),
      sex_(MakeBox("txtSex", "Sex")),
      hip_(MakeBox("txtHip", "Hip")),
      dateOfBirth_(MakeBox("txtDateOfBirth", "Date of birth")),
      bodyWeight_(MakeNumberBox("txtBodyWeight", "Weight")),
      comments_(new CommentsBox) {
  setObjectName(QStringLiteral("framePatient"));
  comments_->setObjectName(QStringLiteral("txtComments"));
  comments_->setAccessibleName(QStringLiteral("Comments"));
  comments_->setReadOnly(true);
  comments_->setMinimumHeight(3 * fontMetrics().lineSpacing());

  QGridLayout* grid = MakeGrid(this);
  AddRow(grid, 0, "Name", name_);
  AddRow(grid, 1, "Sex", sex_);
  AddRow(grid, 2, "Hip", hip_);
  AddRow(grid, 3, "Date of birth", dateOfBirth_);
  AddRow(grid, 4, "Weight", bodyWeight_, "kg");
  AddRow(grid, 5, "Comments", comments_);
  grid->itemAtPosition(5, 0)->setAlignment(Qt::AlignTop);
  grid->setRowStretch(5, 1);
}

void PatientPanel::Show(const Patient& patient) {
  const PatientTexts texts = Vse::PatientTextsOf(patient);
  ShowFromStart(name_, texts.name);
  ShowFromStart(sex_, texts.sex);
  ShowFromStart(hip_, texts.hip);
  ShowFromStart(dateOfBirth_, texts.dateOfBirth);
  ShowFromStart(bodyWeight_, texts.bodyWeight);
  comments_->ShowText(texts.comments);
  name_->setEnabled(!patient.name.isEmpty());
  dateOfBirth_->setEnabled(!patient.dateOfBirth.isEmpty());
  bodyWeight_->setEnabled(!patient.bodyWeight.isEmpty());
  comments_->setEnabled(!patient.comments.isEmpty());
}

void PatientPanel::EnableBoxes() {
  for (QWidget* box : {static_cast<QWidget*>(name_), static_cast<QWidget*>(sex_),
                       static_cast<QWidget*>(hip_), static_cast<QWidget*>(dateOfBirth_),
                       static_cast<QWidget*>(bodyWeight_), static_cast<QWidget*>(comments_)}) {
    box->setEnabled(true);
  }
}

// A box is named for the key of its result: "txtRWb" for "rWb".
ResultsPanel::ResultsPanel(QWidget* parent) : QGroupBox(QStringLiteral("Results"), parent) {
  setObjectName(QStringLiteral("frameResults"));
  QGridLayout* grid = MakeGrid(this);
  for (const Sila::ResultRow& result : Sila::kResults) {
    Row& row = rows_[Sila::IndexOf(result.id)];
    const auto line = static_cast<int>(Sila::IndexOf(result.id));
    std::string name(result.key);
    name.front() = static_cast<char>(std::toupper(name.front()));
    const std::string caption(result.caption);
    const std::string unit(result.unit);
    row.box = MakeNumberBox(("txt" + name).c_str(), caption.c_str());
    row.unit = AddRow(grid, line, caption.c_str(), row.box, unit.empty() ? nullptr : unit.c_str());
    row.label = qobject_cast<QLabel*>(grid->itemAtPosition(line, 0)->widget());
    row.label->setObjectName(QString::fromStdString("lbl" + name));
    if (row.unit != nullptr) row.unit->setObjectName(QString::fromStdString("lbl" + name + "Unit"));
  }
}

void ResultsPanel::Show(const ResultTexts& results) {
  for (const Sila::ResultRow& result : Sila::kResults) {
    const Row& row = rows_[Sila::IndexOf(result.id)];
    const bool shown = !results[result.id].isEmpty();
    row.box->setVisible(shown);
    row.label->setVisible(shown);
    if (row.unit != nullptr) row.unit->setVisible(shown);
    if (shown) row.box->setText(results[result.id]);
  }
  EnableBoxes(true);
}

void ResultsPanel::EnableBoxes(bool enabled) {
  for (const Row& row : rows_) row.box->setEnabled(enabled);
}
