// Builds the controls of the case form.
#include "caseform/case_form_controls.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>
#include <QVBoxLayout>
#include <QValidator>
#include <algorithm>
#include <vector>

#include "caseform/form_fonts.h"
#include "caseform/hip_picture.h"
#include "platform/choice_list.h"
#include "platform/comments_box.h"
#include "platform/length_units.h"

namespace {

constexpr int kNumberWidth = 10 * kGrid;
constexpr int kUnitWidth = 9 * kGrid;
constexpr int kNameWidth = 16 * kGrid;
constexpr int kDateWidth = 14 * kGrid;

struct FormRow {
  Sila::Measurement id = Sila::Measurement::Lizm;
  const char* text = "";
  const char* combo = "";
  const char* label = "";    // an ampersand marks the access key
  const char* caption = "";  // as a screen reader says it
  const char* hint = "";     // what it is
  const char* proposed = "";
  const char* words = "";  // what it is, where there is no hint
  const char* glyph = "";  // an angle's letter before the label
};

// "pelvic heigh" is spelt so, and x is the vertical coordinate. Deliberate.
constexpr std::array kRows = {
    FormRow{Sila::Measurement::Lizm, "Text1", "Combo1", "&l/2", "l/2",
            "half of the interhip distance", "10.40"},
    FormRow{Sila::Measurement::Cizm, "Text4", "Combo4", "&C", "C", "pelvic width", "4.40"},
    FormRow{Sila::Measurement::Hizm, "Text5", "Combo5", "&H", "H", "pelvic heigh", "16.00"},
    FormRow{Sila::Measurement::ThetaCE, "Text9", "Combo7", "C&E", "CE", "", "30.0",
            "centre-edge angle", "ϑ"},
    FormRow{Sila::Measurement::Xizm, "Text2", "Combo2", "&x  trochanter", "x  trochanter",
            "vertical coordinate of trochanter", "0.50"},
    FormRow{Sila::Measurement::Zizm, "Text3", "Combo3", "&z  trochanter", "z  trochanter",
            "horizontal coordinate of trochanter", "6.00"},
    FormRow{Sila::Measurement::Zasuk, "Text6", "Combo6", "&rotation angle", "rotation angle", "",
            "0.0", "turn of the trochanter point about the head centre", "φ"},
    FormRow{Sila::Measurement::HeadRadius, "Text13", "Combo8", "ra&dius of head", "radius of head",
            "radius of femoral head", "2.5"}};
constexpr std::size_t kPelvisRows = 4;  // the rest belongs to the femur

// The compiler stops whoever forgets a measurement here.
constexpr bool HasEachOnce() {
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    int count = 0;
    for (const FormRow& own : kRows) count += own.id == row.id ? 1 : 0;
    if (count != 1) return false;
  }
  return true;
}
static_assert(HasEachOnce() && kRows.size() == Sila::kRadiographCount);

// From the smallest unit of length to the largest.
QStringList UnitTexts(Sila::Measurement id) {
  std::vector<Sila::Unit> units;
  for (const Sila::Unit unit : Sila::UnitsOf(Sila::RowOf(id).kind())) units.push_back(unit);
  std::sort(units.begin(), units.end());
  QStringList texts;
  for (const Sila::Unit unit : units) texts << Vse::UnitText(unit).toString();
  return texts;
}

// Keeps control characters out, however a text comes into the box.
class OneLineOnly final : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& text, int& cursor) const override {
    const QString line = Vse::OneLine(text);
    if (line == text) return Acceptable;
    const qsizetype before = Vse::OneLine(text.left(cursor)).size();
    cursor = static_cast<int>(qMin(before, line.size()));
    text = line;
    return Acceptable;
  }
};

// Makes the controls, names them, and counts the labels.
class Builder {
 public:
  CaseFormControls Build(QDialog& form);

 private:
  QLabel* Label(const QString& text, QWidget* buddy = nullptr);
  QLayout* Caption(const FormRow& row, QWidget* box);
  QLineEdit* LineBox(const char* name, const QString& caption, const QString& hint);
  QLineEdit* NumberBox(const char* name, const QString& caption, const QString& hint);
  QRadioButton* Option(const char* name, const QString& text, QWidget* frame);
  QWidget* OptionFrame(const char* name, const QString& caption, QRadioButton*& first,
                       const char* firstName, const QString& firstText, QRadioButton*& second,
                       const char* secondName, const QString& secondText);
  CommentsBox* Comments();
  QWidget* PatientFrame();
  QGridLayout* MeasurementGrid(const QString& heading, std::size_t from, std::size_t to);
  QWidget* DataFrame();
  QLabel* WeightNotice();
  QPushButton* Button(const char* name, const QString& text);
  QLayout* ButtonRow();

  CaseFormControls controls_;
  int labels_ = 0;
};

void SetHint(QWidget* widget, const QString& hint) {
  widget->setToolTip(hint);
  widget->setAccessibleDescription(hint);
}

QLabel* Builder::Label(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setObjectName(QStringLiteral("Label%1").arg(++labels_));
  label->setBuddy(buddy);
  if (buddy != nullptr) label->setToolTip(buddy->toolTip());
  return label;
}

// The letter of an angle is a label of its own, in the Symbol font.
QLayout* Builder::Caption(const FormRow& row, QWidget* box) {
  auto* caption = new QHBoxLayout;
  caption->setSpacing(kGrid / 2);
  if (*row.glyph != 0) {
    QLabel* glyph = Label(row.glyph);
    glyph->setFont(FormFonts::Symbol());
    caption->addWidget(glyph);
  }
  caption->addWidget(Label(row.label, box), 1);
  return caption;
}

QLineEdit* Builder::LineBox(const char* name, const QString& caption, const QString& hint) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setAccessibleName(caption);
  box->setValidator(new OneLineOnly(box));
  SetHint(box, hint);
  return box;
}

QLineEdit* Builder::NumberBox(const char* name, const QString& caption, const QString& hint) {
  QLineEdit* box = LineBox(name, caption, hint);
  box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  box->setFixedWidth(kNumberWidth);
  return box;
}

QRadioButton* Builder::Option(const char* name, const QString& text, QWidget* frame) {
  auto* option = new QRadioButton(text, frame);
  option->setObjectName(name);
  option->setAccessibleName(QString(text).remove('&'));
  option->setAccessibleDescription(frame->accessibleName());
  return option;
}

QWidget* Builder::OptionFrame(const char* name, const QString& caption, QRadioButton*& first,
                              const char* firstName, const QString& firstText,
                              QRadioButton*& second, const char* secondName,
                              const QString& secondText) {
  auto* frame = new QFrame;
  frame->setObjectName(name);
  frame->setAccessibleName(caption);
  first = Option(firstName, firstText, frame);
  second = Option(secondName, secondText, frame);
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2 * kGrid);
  row->addWidget(first);
  row->addWidget(second);
  row->addStretch();
  return frame;
}

CommentsBox* Builder::Comments() {
  auto* box = new CommentsBox;
  box->setObjectName("Text12");
  box->setAccessibleName("Comments");
  // The hint of l/2. Deliberate, but not for a screen reader, which would read it each time.
  box->setToolTip("polovicna medkolcna razdalja");
  box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  constexpr int kLines = 3;
  box->setMinimumHeight(QFontMetrics(FormFonts::Label()).lineSpacing() * kLines + 2 * kGrid);
  return box;
}

QWidget* Builder::PatientFrame() {
  auto* frame = new QGroupBox("Patient");
  frame->setObjectName("Frame2");
  auto& c = controls_;
  c.surname = LineBox("Text8", "Surname", {});
  c.firstName = LineBox("Text7", "First name", {});
  c.dateOfBirth = LineBox("Text11", "Birth", "date of birth");
  c.bodyWeight = NumberBox("Text10", "Weight", "body weight");
  c.comments = Comments();
  c.bodyWeight->setAccessibleName("Weight in kg");
  c.surname->setMinimumWidth(kNameWidth);
  c.firstName->setMinimumWidth(kDateWidth);
  QWidget* sex =
      OptionFrame("Frame3", "Sex", c.male, "Option1", "&male", c.female, "Option2", "fem&ale");
  QWidget* hip =
      OptionFrame("Frame4", "Hip", c.left, "Option3", "Lef&t", c.right, "Option4", "Ri&ght");
  auto* weight = new QHBoxLayout;
  weight->setSpacing(kGrid);
  weight->addWidget(c.bodyWeight);
  weight->addWidget(Label("kg"));
  weight->addStretch();

  auto* grid = new QGridLayout(frame);
  grid->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, 2 * kGrid);
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(kGrid);
  grid->setColumnMinimumWidth(2, kGrid);
  grid->addWidget(Label("&Surname", c.surname), 0, 0);
  grid->addWidget(c.surname, 0, 1);
  grid->addWidget(Label("&First name", c.firstName), 0, 3);
  grid->addWidget(c.firstName, 0, 4);
  grid->addWidget(Label("Sex"), 1, 0);
  grid->addWidget(sex, 1, 1);
  grid->addWidget(Label("&Birth", c.dateOfBirth), 1, 3);
  grid->addWidget(c.dateOfBirth, 1, 4);
  grid->addWidget(Label("&Weight", c.bodyWeight), 2, 0);
  grid->addLayout(weight, 2, 1);
  grid->addWidget(Label("Hip"), 2, 3);
  grid->addWidget(hip, 2, 4);
  grid->addWidget(Label("Comme&nts", c.comments), 3, 0, Qt::AlignTop);
  grid->addWidget(c.comments, 3, 1, 1, 4);
  grid->setRowStretch(3, 1);
  return frame;
}

QGridLayout* Builder::MeasurementGrid(const QString& heading, std::size_t from, std::size_t to) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(kGrid);
  grid->setColumnStretch(0, 1);
  grid->addWidget(Label(heading), 0, 0, 1, 3);
  for (std::size_t i = from; i < to; ++i) {
    const FormRow& row = kRows[i];
    MeasurementControls& controls = controls_.measurements[Sila::IndexOf(row.id)];
    controls.text = NumberBox(row.text, row.caption, row.hint);
    if (*row.hint == 0) controls.text->setAccessibleDescription(row.words);
    controls.unit = new ChoiceList(QString(row.caption) + " unit");
    controls.unit->setObjectName(row.combo);
    controls.unit->view()->setObjectName(controls.unit->objectName() + "List");
    controls.unit->addItems(UnitTexts(row.id));
    controls.unit->setFixedWidth(kUnitWidth);
    const int line = static_cast<int>(i - from) + 1;
    grid->addLayout(Caption(row, controls.text), line, 0);
    grid->addWidget(controls.text, line, 1);
    grid->addWidget(controls.unit, line, 2);
  }
  return grid;
}

QWidget* Builder::DataFrame() {
  auto* frame = new QGroupBox("Data");
  frame->setObjectName("Frame1");
  auto* columns = new QHBoxLayout(frame);
  columns->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, 2 * kGrid);
  columns->setSpacing(3 * kGrid);
  columns->addLayout(MeasurementGrid("Pelvis", 0, kPelvisRows));
  columns->addLayout(MeasurementGrid("Femur", kPelvisRows, kRows.size()));
  return frame;
}

QLabel* Builder::WeightNotice() {
  controls_.weightNotice = new QLabel;
  controls_.weightNotice->setObjectName("lblWeightNotice");
  controls_.weightNotice->setWordWrap(true);
  controls_.weightNotice->hide();
  return controls_.weightNotice;
}

QPushButton* Builder::Button(const char* name, const QString& text) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAccessibleName(QString(text).remove('&'));
  return button;
}

QLayout* Builder::ButtonRow() {
  auto& c = controls_;
  c.ok = Button("Command1", "OK");
  c.cancel = Button("Command2", "Cancel");
  c.hidePicture = Button("Command3", "&Input data   ==>");
  c.showPicture = Button("Command4", "&Input data   <==");
  c.ok->setDefault(true);
  c.showPicture->hide();
  for (QPushButton* button : {c.hidePicture, c.showPicture}) button->setMinimumWidth(16 * kGrid);
  auto* row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(c.hidePicture);
  row->addWidget(c.showPicture);
  row->addStretch();
  row->addWidget(c.ok);
  row->addWidget(c.cancel);
  return row;
}

void SetTabOrder(const CaseFormControls& c) {
  QList<QWidget*> order = {c.surname,    c.firstName, c.male,  c.female,  c.dateOfBirth,
                           c.bodyWeight, c.left,      c.right, c.comments};
  for (const FormRow& row : kRows) {
    const MeasurementControls& controls = c.measurements[Sila::IndexOf(row.id)];
    order << controls.text << controls.unit;
  }
  order << c.ok << c.cancel << c.hidePicture << c.showPicture;
  for (qsizetype i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
}

CaseFormControls Builder::Build(QDialog& form) {
  form.setFont(FormFonts::Label());
  auto* left = new QVBoxLayout;
  left->setSpacing(2 * kGrid);
  left->addWidget(PatientFrame(), 1);
  left->addWidget(DataFrame());
  left->addWidget(WeightNotice());
  left->addLayout(ButtonRow());
  controls_.picture = new HipPicture;
  auto* columns = new QHBoxLayout(&form);
  columns->setContentsMargins(2 * kGrid, 2 * kGrid, 2 * kGrid, 2 * kGrid);
  columns->setSpacing(2 * kGrid);
  columns->addLayout(left);
  columns->addWidget(controls_.picture, 1);
  SetTabOrder(controls_);
  return controls_;
}

}  // namespace

CaseFormControls BuildCaseFormControls(QDialog& form) {
  return Builder().Build(form);
}

CaseEntries DefaultCaseEntries() {
  CaseEntries entries;
  for (const FormRow& row : kRows) {
    const bool angle = Sila::RowOf(row.id).kind() == Sila::Kind::Angle;
    entries[row.id] = {row.proposed, angle ? Sila::Unit::Degree : Sila::Unit::Centimetre};
  }
  return entries;
}
