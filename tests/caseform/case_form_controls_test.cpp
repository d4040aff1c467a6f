// Every control of the case form: name, caption, hint, proposed entry, units, way of the Tab key.
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSet>

#include "caseform/form_fonts.h"
#include "caseform/hip_picture.h"
#include "tests/caseform/form_fixture.h"
#include "tests/support/row_name.h"

namespace {

struct MeasureRow {
  const char* name;
  const char* box;
  const char* list;
  const char* caption;
  const char* hint;
  const char* proposed;
  QStringList units;
  const char* unit;
  const char* words = "";  // what a screen reader says where there is no hint
};

class MeasureControlsTable : public CaseForm, public testing::WithParamInterface<MeasureRow> {};

QLabel* LabelOf(const QWidget& form, const QWidget* box) {
  for (QLabel* label : form.findChildren<QLabel*>()) {
    if (label->buddy() == box) return label;
  }
  return nullptr;
}

TEST_P(MeasureControlsTable, IsThere) {
  const MeasureRow& row = GetParam();
  auto* box = Find(row.box);
  auto* list = Find<QComboBox>(row.list);
  EXPECT_EQ(box->accessibleName(), row.caption);
  EXPECT_EQ(box->toolTip(), row.hint);
  EXPECT_EQ(box->accessibleDescription(), QString(row.hint) + row.words);
  EXPECT_EQ(box->text(), row.proposed);
  EXPECT_TRUE(box->alignment().testFlag(Qt::AlignRight));
  EXPECT_EQ(list->accessibleName(), QString(row.caption) + " unit");
  EXPECT_EQ(list->currentText(), row.unit);
  EXPECT_FALSE(list->isEditable());
  QStringList units;
  for (int i = 0; i < list->count(); ++i) units << list->itemText(i);
  EXPECT_EQ(units, row.units);
  EXPECT_TRUE(Control("Frame1")->isAncestorOf(box));
  const QLabel* label = LabelOf(*form_, box);
  ASSERT_NE(label, nullptr);
  EXPECT_TRUE(label->text().remove('&').contains(row.caption)) << label->text().toStdString();
}

const QStringList kLength = {"mm", "cm"};
const QStringList kAngle = {"  °  ", "rad"};

INSTANTIATE_TEST_SUITE_P(
    Table, MeasureControlsTable,
    testing::Values(
        MeasureRow{"Lizm", "Text1", "Combo1", "l/2", "half of the interhip distance", "10.40",
                   kLength, "cm"},
        MeasureRow{"Xizm", "Text2", "Combo2", "x  trochanter", "vertical coordinate of trochanter",
                   "0.50", kLength, "cm"},
        MeasureRow{"Zizm", "Text3", "Combo3", "z  trochanter",
                   "horizontal coordinate of trochanter", "6.00", kLength, "cm"},
        MeasureRow{"Cizm", "Text4", "Combo4", "C", "pelvic width", "4.40", kLength, "cm"},
        MeasureRow{"Hizm", "Text5", "Combo5", "H", "pelvic heigh", "16.00", kLength, "cm"},
        MeasureRow{"Zasuk", "Text6", "Combo6", "rotation angle", "", "0.0", kAngle, "  °  ",
                   "turn of the trochanter point about the head centre"},
        MeasureRow{"ThetaCE", "Text9", "Combo7", "CE", "", "30.0", kAngle, "  °  ",
                   "centre-edge angle"},
        MeasureRow{"HeadRadius", "Text13", "Combo8", "radius of head", "radius of femoral head",
                   "2.5", QStringList{"mm", "cm", "m"}, "cm"}),
    RowName());

struct PatientRow {
  const char* name;
  const char* box;
  const char* caption;
  const char* hint;
  const char* accessibleName;
  const char* description;
};

class PatientControlsTable : public CaseForm, public testing::WithParamInterface<PatientRow> {};

TEST_P(PatientControlsTable, IsThereAndEmpty) {
  const PatientRow& row = GetParam();
  QWidget* box = Control(row.box);
  EXPECT_EQ(box->accessibleName(), row.accessibleName);
  EXPECT_EQ(box->toolTip(), row.hint);
  EXPECT_EQ(box->accessibleDescription(), row.description);
  EXPECT_TRUE(Control("Frame2")->isAncestorOf(box));
  const QLabel* label = LabelOf(*form_, box);
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text().remove('&'), row.caption);
  const auto* line = qobject_cast<QLineEdit*>(box);
  EXPECT_TRUE(line == nullptr || line->text().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, PatientControlsTable,
    testing::Values(
        PatientRow{"FirstName", "Text7", "First name", "", "First name", ""},
        PatientRow{"Surname", "Text8", "Surname", "", "Surname", ""},
        PatientRow{"Weight", "Text10", "Weight", "body weight", "Weight in kg", "body weight"},
        PatientRow{"Birth", "Text11", "Birth", "date of birth", "Birth", "date of birth"},
        PatientRow{"Comments", "Text12", "Comments", "polovicna medkolcna razdalja", "Comments",
                   ""}),
    RowName());

TEST_F(CaseForm, IsModalAndSaysWhatItIs) {
  EXPECT_EQ(form_->windowTitle(), "TELMARRION data");
  EXPECT_EQ(form_->objectName(), "Form1");
  EXPECT_TRUE(form_->isModal());
  EXPECT_EQ(Find<QGroupBox>("Frame1")->title(), "Data");
  EXPECT_EQ(Find<QGroupBox>("Frame2")->title(), "Patient");
}

TEST_F(CaseForm, SexAndHipAreOpenAndExcludeEachOther) {
  for (const auto& [name, text, frame] :
       {std::tuple("Option1", "male", "Frame3"), std::tuple("Option2", "female", "Frame3"),
        std::tuple("Option3", "Left", "Frame4"), std::tuple("Option4", "Right", "Frame4")}) {
    auto* option = Find<QRadioButton>(name);
    EXPECT_EQ(option->text().remove('&'), text);
    EXPECT_EQ(option->accessibleName(), text);
    EXPECT_FALSE(option->isChecked());
    EXPECT_TRUE(Control(frame)->isAncestorOf(option));
  }
  EXPECT_EQ(Control("Frame3")->accessibleName(), "Sex");
  EXPECT_EQ(Control("Frame4")->accessibleName(), "Hip");
  Find<QRadioButton>("Option1")->click();
  Find<QRadioButton>("Option4")->click();
  Find<QRadioButton>("Option2")->click();
  EXPECT_FALSE(Find<QRadioButton>("Option1")->isChecked());
  EXPECT_TRUE(Find<QRadioButton>("Option4")->isChecked());
}

TEST_F(CaseForm, ButtonsSayWhatTheyDo) {
  for (const auto& [name, text] :
       {std::pair("Command1", "OK"), std::pair("Command2", "Cancel"),
        std::pair("Command3", "Input data   ==>"), std::pair("Command4", "Input data   <==")}) {
    EXPECT_EQ(Find<QPushButton>(name)->text().remove('&'), text);
    EXPECT_EQ(Find<QPushButton>(name)->accessibleName(), text);
  }
  EXPECT_TRUE(Control("Command3")->isVisible());
  EXPECT_FALSE(Control("Command4")->isVisible());
  EXPECT_TRUE(Find<QPushButton>("Command1")->isDefault());
}

bool IsGreek(const QString& text) {
  return text.size() == 1 && text[0].script() == QChar::Script_Greek;
}

// The letter of an angle asks for the font of symbols, beside the caption and in the picture alike.
TEST_F(CaseForm, LabelsAreSetInTimesAndLettersOfAnglesInSymbol) {
  QStringList letters;
  for (const QLabel* label : form_->findChildren<QLabel*>()) {
    const bool isGreek = IsGreek(label->text());
    EXPECT_EQ(label->font().families().value(0), isGreek ? "Symbol" : "Times New Roman")
        << label->text().toStdString();
    if (isGreek) letters << label->text();
  }
  EXPECT_EQ(letters, QStringList({"ϑ", "φ"}));
  EXPECT_EQ(FormFonts::Symbol().families(),
            (QStringList{"Symbol", "Times New Roman", "Liberation Serif"}));
}

// The label that shows this text and nothing else.
QLabel* Showing(const QWidget& form, const QString& text) {
  for (QLabel* label : form.findChildren<QLabel*>()) {
    if (label->isVisible() && label->text().remove('&') == text) return label;
  }
  ADD_FAILURE() << "nothing shows " << text.toStdString();
  return nullptr;
}

QRect AreaOf(const QWidget& widget) {
  return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

// On one line, the first before the second with nothing but a gap between.
void ExpectBefore(const QWidget* first, const QWidget* second) {
  ASSERT_TRUE(first != nullptr && second != nullptr);
  const QRect left = AreaOf(*first);
  const QRect right = AreaOf(*second);
  EXPECT_LT(left.right(), right.left());
  EXPECT_LT(right.left() - left.right(), 40);
  EXPECT_LT(left.top(), right.bottom());
  EXPECT_LT(right.top(), left.bottom());
}

TEST_F(CaseForm, CaptionsStandBesideWhatTheyName) {
  ExpectBefore(Showing(*form_, "ϑ"), LabelOf(*form_, Find("Text9")));
  ExpectBefore(Showing(*form_, "φ"), LabelOf(*form_, Find("Text6")));
  EXPECT_EQ(LabelOf(*form_, Find("Text9"))->text().remove('&'), "CE");
  EXPECT_EQ(LabelOf(*form_, Find("Text6"))->text().remove('&'), "rotation angle");
  ExpectBefore(Showing(*form_, "Sex"), Control("Frame3"));
  ExpectBefore(Showing(*form_, "Hip"), Control("Frame4"));
  ExpectBefore(Control("Text10"), Showing(*form_, "kg"));
}

// Above the captions of its measures.
void ExpectAbove(const QLabel* heading, const QList<QLabel*>& captions) {
  ASSERT_NE(heading, nullptr);
  const QRect area = AreaOf(*heading);
  for (const QLabel* caption : captions) {
    const QRect below = AreaOf(*caption);
    EXPECT_LT(area.bottom(), below.top()) << caption->text().toStdString();
    EXPECT_TRUE(area.left() <= below.left() && below.right() <= area.right())
        << caption->text().toStdString();
  }
}

TEST_F(CaseForm, PelvisAndFemurHeadTheirMeasures) {
  const auto captionsOf = [&](const QStringList& boxes) {
    QList<QLabel*> captions;
    for (const QString& box : boxes) captions << LabelOf(*form_, Find(box));
    return captions;
  };
  ExpectAbove(Showing(*form_, "Pelvis"), captionsOf({"Text1", "Text4", "Text5", "Text9"}));
  ExpectAbove(Showing(*form_, "Femur"), captionsOf({"Text2", "Text3", "Text6", "Text13"}));
}

TEST_F(CaseForm, EveryControlHasANameOfItsOwn) {
  QSet<QString> names;
  for (QWidget* widget : form_->findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) continue;
    EXPECT_FALSE(widget->objectName().isEmpty()) << widget->metaObject()->className();
    EXPECT_FALSE(names.contains(widget->objectName())) << widget->objectName().toStdString();
    names.insert(widget->objectName());
  }
  EXPECT_TRUE(names.contains("Text1"));
}

TEST_F(CaseForm, AccessKeysAreUnique) {
  QHash<QChar, QString> keys;
  const auto add = [&keys](const QString& text) {
    const qsizetype mark = text.indexOf('&');
    if (mark < 0) return;
    const QChar key = text[mark + 1].toLower();
    EXPECT_FALSE(keys.contains(key)) << text.toStdString() << " and " << keys[key].toStdString();
    keys[key] = text;
  };
  for (const QLabel* label : form_->findChildren<QLabel*>()) add(label->text());
  for (const QAbstractButton* button : form_->findChildren<QAbstractButton*>()) {
    if (button->isVisible()) add(button->text());
  }
  EXPECT_TRUE(keys.contains('h'));
}

TEST_F(CaseForm, AccessKeyLeadsToItsBox) {
  QTest::keyClick(form_.get(), Qt::Key_H, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), Control("Text5"));
  QTest::keyClick(form_.get(), Qt::Key_N, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), Control("Text12"));
}

TEST_F(CaseForm, TabGoesThroughPatientPelvisFemurAndButtons) {
  const QStringList expected = {"Text8",    "Text7",    "Option1", "Text11", "Text10", "Option3",
                                "Text12",   "Text1",    "Combo1",  "Text4",  "Combo4", "Text5",
                                "Combo5",   "Text9",    "Combo7",  "Text2",  "Combo2", "Text3",
                                "Combo3",   "Text6",    "Combo6",  "Text13", "Combo8", "Command1",
                                "Command2", "Command3", "Text8"};
  Find<QRadioButton>("Option1")->setChecked(true);
  Find<QRadioButton>("Option3")->setChecked(true);
  QStringList passed = {QApplication::focusWidget()->objectName()};
  for (qsizetype i = 1; i < expected.size(); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    passed << QApplication::focusWidget()->objectName();
  }
  EXPECT_EQ(passed, expected) << passed.join(' ').toStdString();
}

TEST_F(CaseForm, NothingIsCutOff) {
  for (QWidget* widget : form_->findChildren<QWidget*>()) {
    if (!widget->isVisible() || qobject_cast<QPlainTextEdit*>(widget->parentWidget())) continue;
    if (qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
        qobject_cast<QLineEdit*>(widget)) {
      EXPECT_GE(widget->width(), qobject_cast<QLineEdit*>(widget) ? 80 : widget->sizeHint().width())
          << widget->objectName().toStdString();
      EXPECT_GE(widget->height(), widget->sizeHint().height())
          << widget->objectName().toStdString();
    }
  }
  EXPECT_LE(form_->width(), 1008);
  EXPECT_LE(form_->height(), 700);
}

TEST_F(CaseForm, InputDataFoldsThePictureAwayAndBack) {
  const QSize wide = form_->size();
  EXPECT_TRUE(Control("Picture1")->isVisible());
  QTest::mouseClick(Control("Command3"), Qt::LeftButton);
  EXPECT_FALSE(Control("Picture1")->isVisible());
  EXPECT_FALSE(Control("Command3")->isVisible());
  EXPECT_TRUE(Control("Command4")->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), Control("Command4"));
  EXPECT_LT(form_->width(), wide.width() - 300);
  EXPECT_EQ(form_->height(), wide.height());
  QTest::mouseClick(Control("Command4"), Qt::LeftButton);
  EXPECT_TRUE(Control("Picture1")->isVisible());
  EXPECT_TRUE(Control("Command3")->isVisible());
  EXPECT_FALSE(Control("Command4")->isVisible());
  EXPECT_EQ(form_->size(), wide);
}

TEST_F(CaseForm, ANewFormRemembersNothing) {
  Type("Text8", "Surname");
  Type("Text1", "9");
  Find<QPushButton>("Command3")->click();
  form_->reject();
  form_ = nullptr;
  Open(QLocale::c());
  EXPECT_EQ(form_->Entries(), DefaultCaseEntries());
  EXPECT_TRUE(Control("Picture1")->isVisible());
  EXPECT_TRUE(Control("Command3")->isVisible());
}

}  // namespace
