// What the case form does: entries in and out, checks, focus.
#include "caseform/case_form.h"

#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStringView>
#include <cmath>
#include <utility>

#include "case/case_record.h"
#include "case/date_text.h"
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

// The boxes lose the focus while they are taken down, when there is no form any more to be told.
Form1::~Form1() {
  focus_->disconnect(this);
}

void Form1::ConnectControls() {
  connect(controls_.ok, &QPushButton::clicked, this, &Form1::PressOk);
  connect(controls_.cancel, &QPushButton::clicked, this, &Form1::reject);
  connect(controls_.hidePicture, &QPushButton::clicked, this, [this] { ShowPicture(false); });
  connect(controls_.showPicture, &QPushButton::clicked, this, [this] { ShowPicture(true); });
  connect(&checkTimer_, &QTimer::timeout, this, &Form1::RunScheduledChecks);
  // In the comments Enter begins a line.
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
    connect(shortcut, &QShortcut::activated, this, &Form1::PressOk);
  }
}

void Form1::WatchEntries() {
  const auto& c = controls_;
  for (QWidget* box : {c.surname, c.firstName, c.dateOfBirth, c.bodyWeight}) focus_->Watch(box);
  focus_->Watch(c.comments);
  for (const MeasureControls& measure : c.measures) focus_->Watch(measure.text);
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
  if (c.male->isChecked()) entries.sex = CaseEntries::Sex::Male;
  if (c.female->isChecked()) entries.sex = CaseEntries::Sex::Female;
  entries.dateOfBirth = TextOf(c.dateOfBirth);
  entries.bodyWeight = TextOf(c.bodyWeight);
  if (c.left->isChecked()) entries.hip = CaseEntries::Hip::Left;
  if (c.right->isChecked()) entries.hip = CaseEntries::Hip::Right;
  entries.comments = TextOf(c.comments);
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    entries.measures[i] = {c.measures[i].text->text(), c.measures[i].unit->currentText()};
  }
  return entries;
}

void Form1::SetEntries(const CaseEntries& entries) {
  const auto& c = controls_;
  DropScheduledChecks();
  c.surname->setText(entries.surname);
  c.firstName->setText(entries.firstName);
  Choose(c.male, c.female, entries.sex == CaseEntries::Sex::Male,
         entries.sex == CaseEntries::Sex::Female);
  c.dateOfBirth->setText(entries.dateOfBirth);
  c.bodyWeight->setText(entries.bodyWeight);
  Choose(c.left, c.right, entries.hip == CaseEntries::Hip::Left,
         entries.hip == CaseEntries::Hip::Right);
  c.comments->ShowText(entries.comments);
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const MeasureControls& controls = c.measures[i];
    controls.text->setText(entries.measures[i].text);
    const int unit = controls.unit->findText(entries.measures[i].unit, Qt::MatchExactly);
    Q_ASSERT(unit >= 0);
    controls.unit->setCurrentIndex(unit);
  }
}

void Form1::SetBodyWeight(const QString& text) {
  controls_.bodyWeight->setText(text);
}

std::optional<double> Form1::ReadNumber(const QString& text) {
  const std::optional<double> number = Vse::ReadNumber(text.trimmed().toUtf8().toStdString());
  inputError_ = !number.has_value();
  return number;
}

std::optional<double> Form1::ParseNumber(const QString& text) {
  const std::optional<double> number = ReadNumber(text);
  if (!number) ShowError("numeric value expected");
  return number;
}

void Form1::BeginConfirmation() {
  DropScheduledChecks();
  entryError_ = false;
}

std::optional<double> Form1::ConfirmNumber(const QString& text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) entryError_ = true;
  return number;
}

std::optional<double> Form1::ConfirmMeasure(Measure measure, const MeasureEntry& entry) {
  const std::optional<double> number = ConfirmNumber(entry.text);
  if (!number) return std::nullopt;
  const bool inRadians = Vse::IsAngle(measure) && entry.unit != Vse::kDegree;
  if (inRadians && *number > Vse::kLargestRadians) {
    entryError_ = true;
    ShowError("wrong angle");
    return std::nullopt;
  }
  return Vse::HeldValue(measure, *number, entry.unit);
}

bool Form1::CheckDateOfBirth(const QString& text) {
  if (text.trimmed().isEmpty() || text == Vse::kUnknown) return true;
  if (Vse::IsValidDate(text, locale_)) return true;
  const std::optional<double> year = ReadNumber(text);
  const bool whole = year && *year == std::trunc(*year);
  if (whole && *year / 1000.0 > 1.0 && *year / 1000.0 < 3.0) return true;
  entryError_ = true;
  ShowError("wrong date");
  return false;
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
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    if (controls_.measures[i].text != box) continue;
    controls_.picture->SetHighlighted(static_cast<Measure>(i), highlighted);
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
  if (checking_) return;          // a message is up; the loop below goes on after it
  if (IsBusyWithMouse()) return checkTimer_.start(kLookAgain);
  checking_ = true;
  while (!leftBoxes_.isEmpty()) CheckLeftBox(leftBoxes_.takeFirst());
  checking_ = false;
}

void Form1::CheckLeftBox(const QWidget* box) {
  if (box == controls_.dateOfBirth) {
    CheckDateOfBirth(controls_.dateOfBirth->text());
    return;
  }
  if (box == controls_.bodyWeight && !TextOf(controls_.bodyWeight).isEmpty()) {
    ParseNumber(controls_.bodyWeight->text());
  }
  for (const MeasureControls& measure : controls_.measures) {
    if (measure.text == box) ParseNumber(measure.text->text());
  }
}

void Form1::DropScheduledChecks() {
  leftBoxes_.clear();
  checkTimer_.stop();
}
