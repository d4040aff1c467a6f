// Boxes, captions and units of the two panels.
#include "app/panels.h"

#include <QFontMetrics>
#include <QGridLayout>

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

// Its caption stands on the left, its unit on the right; both are in its accessible name.
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
  // The boxes of both panels stand below each other.
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

void PatientPanel::SetBox(QString PatientTexts::*box, const QString& text, bool enabled) {
  if (box == &PatientTexts::comments) {
    comments_->ShowText(text);
    comments_->setEnabled(enabled);
    return;
  }
  QLineEdit* line = box == &PatientTexts::name          ? name_
                    : box == &PatientTexts::sex         ? sex_
                    : box == &PatientTexts::hip         ? hip_
                    : box == &PatientTexts::dateOfBirth ? dateOfBirth_
                                                        : bodyWeight_;
  ShowFromStart(line, text);
  line->setEnabled(enabled);
}

void PatientPanel::EnableBoxes() {
  for (QWidget* box : {static_cast<QWidget*>(name_), static_cast<QWidget*>(sex_),
                       static_cast<QWidget*>(hip_), static_cast<QWidget*>(dateOfBirth_),
                       static_cast<QWidget*>(bodyWeight_), static_cast<QWidget*>(comments_)}) {
    box->setEnabled(true);
  }
}

ResultsPanel::ResultsPanel(QWidget* parent)
    : QGroupBox(QStringLiteral("Results"), parent),
      rWb_(MakeNumberBox("txtRWb", "R/Wb")),
      thetaR_(MakeNumberBox("txtThetaR", "Theta-R")),
      thetaPol_(MakeNumberBox("txtThetaPol", "Theta-pol")),
      pmaxWb_(MakeNumberBox("txtPmaxWb", "Pmax/Wb")),
      pmax_(MakeNumberBox("txtPmax", "Pmax")) {
  setObjectName(QStringLiteral("frameResults"));
  QGridLayout* grid = MakeGrid(this);
  AddRow(grid, 0, "R/Wb", rWb_);
  AddRow(grid, 1, "Theta-R", thetaR_, "°");
  AddRow(grid, 2, "Theta-pol", thetaPol_, "°");
  AddRow(grid, 3, "Pmax/Wb", pmaxWb_, "m^-2");
  pmaxUnit_ = AddRow(grid, 4, "Pmax", pmax_, "Pa");
  pmaxLabel_ = qobject_cast<QLabel*>(grid->itemAtPosition(4, 0)->widget());
  pmaxLabel_->setObjectName(QStringLiteral("lblPmax"));
  pmaxUnit_->setObjectName(QStringLiteral("lblPmaxUnit"));
}

void ResultsPanel::SetResults(const ResultTexts& results) {
  rWb_->setText(results.rWb);
  thetaR_->setText(results.thetaR);
  thetaPol_->setText(results.thetaPol);
  pmaxWb_->setText(results.pmaxWb);
  for (QWidget* widget : {static_cast<QWidget*>(pmax_), static_cast<QWidget*>(pmaxLabel_),
                          static_cast<QWidget*>(pmaxUnit_)}) {
    widget->setVisible(results.pmax.has_value());
  }
  if (results.pmax) pmax_->setText(*results.pmax);
}
