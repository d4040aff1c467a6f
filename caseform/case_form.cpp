// What the case form does: entries in and out, checks, focus.
#include "caseform/case_form.h"

#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStringView>
#include <utility>

#include "case/number_text.h"
#include "caseform/entry_focus.h"
#include "caseform/hip_picture.h"
#include "platform/comments_box.h"
#include "platform/message_door.h"

namespace {

// Chooses one of two option buttons, or none.
void Choose(QRadioButton* first, QRadioButton* second, bool isFirst, bool isSecond) {
  for (const auto& [option, chosen] : {std::pair(first, isFirst), std::pair(second, isSecond)}) {
    option->setAutoExclusive(false);  // else the last one cannot be switched off
    option->setChecked(chosen);
    option->setAutoExclusive(true);
  }
}

QString TextOf(const QLineEdit* box) {
  return box->text().trimmed().isEmpty() ? QString() : box->text();
}

QString TextOf(const CommentsBox* box) {
  const QString text = box->Text();
  return text.trimmed().isEmpty() ? QString() : text;
}

constexpr QStringView kNothingMarked = u"No dimension is marked.";

// In words what the red lines of the picture say.
QString MarkedDimension(const QWidget& box) {
  const QString& meaning = box.accessibleDescription();
  return "Marked in red: " + box.accessibleName() + (meaning.isEmpty() ? "" : ", " + meaning);
}

// A press of the mouse or an open list would be lost to a message box.
bool IsBusyWithMouse() {
  return QGuiApplication::mouseButtons() != Qt::NoButton ||
         QApplication::activePopupWidget() != nullptr;
}

}  // namespace

Form1::Form1(MessageDoor& messages, const QLocale& locale, QWidget* parent)
    : QDialog(parent),
      messages_(messages),
      locale_(locale),
      controls_(BuildCaseFormControls(*this)),
      focus_(new EntryFocus(this)) {
  setObjectName("Form1");
  setWindowTitle("TELMARRION data");  // spelt so, deliberately
  setModal(true);
  checkTimer_.setSingleShot(true);
  controls_.picture->setAccessibleDescription(kNothingMarked.toString());
  SetEntries(DefaultCaseEntries());
  ConnectControls();
  WatchEntries();
  resize(sizeHint());
}

// The boxes lose the focus while they are destroyed, when there is no form left to notify.
Form1::~Form1() {
  focus_->disconnect(this);
}

void Form1::ConnectControls() {
  connect(controls_.ok, &QPushButton::clicked, this, &Form1::PressOk);
  connect(controls_.cancel, &QPushButton::clicked, this, &Form1::reject);
  connect(controls_.hidePicture, &QPushButton::clicked, this, [this] { ShowPicture(false); });
  connect(controls_.showPicture, &QPushButton::clicked, this, [this] { ShowPicture(true); });
  connect(&checkTimer_, &QTimer::timeout, this, &Form1::RunScheduledChecks);
  // In the comments Enter starts a new line.
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
    connect(shortcut, &QShortcut::activated, this, &Form1::PressOk);
  }
}

void Form1::WatchEntries() {
  const auto& c = controls_;
  for (QWidget* box : {c.surname, c.firstName, c.dateOfBirth, c.bodyWeight}) focus_->Watch(box);
  focus_->Watch(c.comments);
  for (const MeasurementControls& controls : c.measurements) focus_->Watch(controls.text);
  connect(c.bodyWeight, &QLineEdit::textChanged, this, [this] { weightAssumed_ = false; });
  connect(focus_, &EntryFocus::Entered, this, [this](QWidget* box) { SetHighlighted(box, true); });
  connect(focus_, &EntryFocus::Left, this, [this](QWidget* box) {
    SetHighlighted(box, false);
    ScheduleCheck(box);
  });
}

CaseEntries Form1::Entries() const {
  const auto& c = controls_;
  CaseEntries entries;
  entries.surname = TextOf(c.surname);
  entries.firstName = TextOf(c.firstName);
  if (c.male->isChecked()) entries.sex = Sex::Male;
  if (c.female->isChecked()) entries.sex = Sex::Female;
  entries.dateOfBirth = TextOf(c.dateOfBirth);
  if (!weightAssumed_) entries.bodyWeight = TextOf(c.bodyWeight);
  if (c.left->isChecked()) entries.hip = HipSide::Left;
  if (c.right->isChecked()) entries.hip = HipSide::Right;
  entries.comments = TextOf(c.comments);
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const MeasurementControls& controls = c.measurements[Sila::IndexOf(row.id)];
    const std::optional<Sila::Unit> unit = Vse::UnitOf(row.kind(), controls.unit->currentText());
    Q_ASSERT(unit);
    entries[row.id] = {controls.text->text(), *unit};
  }
  return entries;
}

void Form1::SetEntries(const CaseEntries& entries) {
  const auto& c = controls_;
  DropScheduledChecks();
  c.surname->setText(entries.surname);
  c.firstName->setText(entries.firstName);
  Choose(c.male, c.female, entries.sex == Sex::Male, entries.sex == Sex::Female);
  c.dateOfBirth->setText(entries.dateOfBirth);
  c.bodyWeight->setText(entries.bodyWeight);
  weightAssumed_ = false;  // also when the text is the same
  SetWeightUnknown(false);
  Choose(c.left, c.right, entries.hip == HipSide::Left, entries.hip == HipSide::Right);
  c.comments->ShowText(entries.comments);
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const MeasurementControls& controls = c.measurements[Sila::IndexOf(row.id)];
    const QString unit = Vse::UnitText(entries[row.id].unit).toString();
    controls.text->setText(entries[row.id].text);
    controls.unit->setCurrentIndex(controls.unit->findText(unit, Qt::MatchExactly));
    Q_ASSERT(controls.unit->currentIndex() >= 0);
  }
}

void Form1::AssumeBodyWeight() {
  controls_.bodyWeight->setText(QString::number(Sila::kAssumedBodyWeight));
  weightAssumed_ = true;
  SetWeightUnknown(true);
}

void Form1::SetWeightUnknown(bool unknown) {
  weightUnknown_ = unknown;
  controls_.weightNotice->setText(WeightNotice());
  controls_.weightNotice->setVisible(unknown);
  // A screen reader says it where the weight is typed.
  QLineEdit& box = *controls_.bodyWeight;
  box.setAccessibleDescription(unknown ? WeightNotice() : box.toolTip());
}

QString Form1::WeightNotice() const {
  if (!weightUnknown_) return {};
  return "This weight counts as not known because OK was pressed without one. "
         "New or Change starts over.";
}

std::optional<double> Form1::ParseNumber(const QString& text) {
  const std::optional<double> number = Vse::ReadNumber(text.trimmed().toStdString());
  inputError_ = !number.has_value();
  if (!number) ShowError("numeric value expected");
  return number;
}

void Form1::BeginConfirmation() {
  DropScheduledChecks();
  entryError_ = false;
  inputError_ = false;
}

void Form1::ShowFault(const Vse::Fault& fault) {
  entryError_ = true;
  switch (fault.kind) {
    case Vse::FaultKind::NotANumber:
    case Vse::FaultKind::TooLarge:
      inputError_ = true;
      return ShowError("numeric value expected");
    case Vse::FaultKind::AngleTooLarge:
      return ShowError("wrong angle");
    case Vse::FaultKind::NotADate:
      break;
  }
  ShowError("wrong date");
}

void Form1::CheckDateOfBirth() {
  if (Vse::IsDateOfBirth(controls_.dateOfBirth->text(), locale_)) return;
  ShowFault({Vse::FaultKind::NotADate, std::nullopt});
}

void Form1::ShowError(const QString& text) {
  messages_.ShowError(this, text, "Error");
}

void Form1::PressOk() {
  DropScheduledChecks();  // the confirmation checks every box itself
  emit OkPressed();
}

void Form1::reject() {
  DropScheduledChecks();
  if (weightAssumed_) controls_.bodyWeight->clear();
  SetWeightUnknown(false);
  QDialog::reject();
}

void Form1::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  controls_.surname->setFocus();
}

void Form1::hideEvent(QHideEvent* event) {
  focus_->Reset();
  DropScheduledChecks();
  QDialog::hideEvent(event);
}

// The window gets wider by the picture, or narrower; its height stays.
void Form1::ShowPicture(bool shown) {
  QPushButton* next = shown ? controls_.hidePicture : controls_.showPicture;
  QPushButton* pressed = shown ? controls_.showPicture : controls_.hidePicture;
  const bool hadFocus = pressed->hasFocus();
  const int step = controls_.picture->width() + layout()->spacing();
  const int wanted = shown ? width() + step : width() - step;
  next->show();
  if (hadFocus) next->setFocus();
  pressed->hide();
  controls_.picture->setVisible(shown);
  layout()->activate();
  resize(wanted, height());
}

void Form1::SetHighlighted(const QWidget* box, bool highlighted) {
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    if (controls_.measurements[Sila::IndexOf(row.id)].text != box) continue;
    controls_.picture->SetHighlighted(row.id, highlighted);
    controls_.picture->setAccessibleDescription(highlighted ? MarkedDimension(*box)
                                                            : kNothingMarked.toString());
  }
}

// A message shown from inside the focus event would break off the move of the focus.
void Form1::ScheduleCheck(QWidget* box) {
  if (!isVisible()) return;
  leftBoxes_.append(box);
  checkTimer_.start(0);
}

void Form1::RunScheduledChecks() {
  constexpr int kLookAgain = 20;  // ms
  if (checking_) return;          // a message is open; the loop below continues after it
  if (IsBusyWithMouse()) return checkTimer_.start(kLookAgain);
  checking_ = true;
  while (!leftBoxes_.isEmpty()) CheckLeftBox(leftBoxes_.takeFirst());
  checking_ = false;
}

void Form1::CheckLeftBox(const QWidget* box) {
  if (box == controls_.dateOfBirth) {
    CheckDateOfBirth();
    return;
  }
  if (box == controls_.bodyWeight && !TextOf(controls_.bodyWeight).isEmpty()) {
    ParseNumber(controls_.bodyWeight->text());
  }
  for (const MeasurementControls& controls : controls_.measurements) {
    if (controls.text == box) ParseNumber(controls.text->text());
  }
}

void Form1::DropScheduledChecks() {
  leftBoxes_.clear();
  checkTimer_.stop();
}
