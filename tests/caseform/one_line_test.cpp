// Boxes of one line hold one line, however a text comes into them.
#include <QAccessible>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QMimeData>

#include "tests/caseform/form_fixture.h"

namespace {

const QStringList kBoxes = QStringList{"Text7", "Text8", "Text10", "Text11"} + kNumberBoxes;

class OneLineBoxes : public CaseForm {
 protected:
  void Paste(QLineEdit& box, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    box.selectAll();
    QTest::keySequence(&box, QKeySequence::Paste);
  }
  void Drop(QLineEdit& box, const QString& text) {
    box.clear();
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &enter);
    QDropEvent drop(QPointF(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &drop);
  }
  void CommitByInputMethod(QLineEdit& box, const QString& text) {
    box.clear();
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
  }
  void SetByScreenReader(QLineEdit& box, const QString& text) {
    QAccessible::queryAccessibleInterface(&box)->setText(QAccessible::Value, text);
  }
};

TEST_F(OneLineBoxes, TakeAPastedTextInOneLine) {
  for (const QString& name : kBoxes) {
    for (const auto& [pasted, held] :
         {std::pair("70\r\n", "70"), std::pair("\n70", "70"), std::pair("7\r\n\t0", "7 0"),
          std::pair("a\vb\fc\x7f", "a b c"), std::pair("a\u0085b\u2028c\u2029d", "a b c d"),
          std::pair("\r\n\t", "")}) {
      Paste(*Find(name), QString::fromUtf8(pasted));
      EXPECT_EQ(Find(name)->text(), held) << name.toStdString();
    }
    Paste(*Find(name), QString(u"7\0000"_qs));
    EXPECT_EQ(Find(name)->text(), "7 0") << name.toStdString();
  }
}

TEST_F(OneLineBoxes, TakeAnyOtherTextInOneLine) {
  for (const QString& name : kBoxes) {
    QLineEdit& box = *Find(name);
    Drop(box, "one\r\ntwo");
    EXPECT_EQ(box.text(), "one two") << name.toStdString();
    CommitByInputMethod(box, "three\nfour\n");
    EXPECT_EQ(box.text(), "three four") << name.toStdString();
    SetByScreenReader(box, "five\rsix");
    EXPECT_EQ(box.text(), "five six") << name.toStdString();
    box.setText("seven\teight");
    EXPECT_EQ(box.text(), "seven eight") << name.toStdString();
  }
}

TEST_F(OneLineBoxes, TakeEntriesInOneLine) {
  CaseEntries entries = DefaultCaseEntries();
  entries.surname = "Ko\nvac";
  entries.firstName = "A\tna";
  entries.dateOfBirth = "15.11.1956\r";
  entries.bodyWeight = "70\n";
  entries[Sila::Measurement::Cizm].text = "4.4\r\n";
  form_->SetEntries(entries);
  const CaseEntries held = form_->Entries();
  EXPECT_EQ(held.surname, "Ko vac");
  EXPECT_EQ(held.firstName, "A na");
  EXPECT_EQ(held.dateOfBirth, "15.11.1956");
  EXPECT_EQ(held.bodyWeight, "70");
  EXPECT_EQ(held[Sila::Measurement::Cizm].text, "4.4");
}

// A surname that was read keeps its blank, an angle the blank before its unit.
TEST_F(OneLineBoxes, KeepTheBlanksOfATextThatIsOneLine) {
  for (const char* text : {" 70", "30 ", "  ", "a  b "}) {
    Find("Text10")->setText(text);
    EXPECT_EQ(Find("Text10")->text(), text);
  }
}

TEST_F(OneLineBoxes, LeaveTheCursorBehindWhatWasPasted) {
  QLineEdit& box = *Find("Text8");
  box.setText("Kovac Maria");
  box.setFocus();
  box.setCursorPosition(6);
  QGuiApplication::clipboard()->setText("Ana\n");
  QTest::keySequence(&box, QKeySequence::Paste);
  EXPECT_EQ(box.text(), "Kovac Ana Maria");
  QTest::keyClick(&box, Qt::Key_X);
  EXPECT_EQ(box.text().remove(' '), "KovacAnaxMaria");
}

}  // namespace
