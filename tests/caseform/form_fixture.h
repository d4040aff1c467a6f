// A case form on a screen of its own, with a door that records its messages.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "caseform/case_form.h"
#include "tests/support/recording_message_door.h"

inline const Message kNotANumber = {"error", "Error", "numeric value expected"};
inline const Message kWrongDate = {"error", "Error", "wrong date"};
inline const Message kWrongAngle = {"error", "Error", "wrong angle"};
using Messages = QList<Message>;

// The boxes that hold a number, the weight apart.
inline const QStringList kNumberBoxes = {"Text1", "Text2", "Text3", "Text4",
                                         "Text5", "Text6", "Text9", "Text13"};

class CaseForm : public testing::Test {
 protected:
  void SetUp() override { Open(QLocale::c()); }

  // A new form, shown and active.
  void Open(const QLocale& locale) {
    QLocale::setDefault(locale);
    form_ = std::make_unique<Form1>(door_, locale);
    form_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
  }
  void TearDown() override {
    form_.reset();
    QLocale::setDefault(QLocale::c());
  }

  template <class Widget = QLineEdit>
  Widget* Find(const QString& name) {
    auto* found = form_->findChild<Widget*>(name);
    if (found == nullptr) ADD_FAILURE() << "no control named " << name.toStdString();
    return found;
  }
  QWidget* Control(const QString& name) { return Find<QWidget>(name); }

  // Enters a box and types over what stands in it.
  void Type(const QString& box, const QString& text) {
    Find(box)->setFocus();
    if (text.isEmpty()) QTest::keyClick(Find(box), Qt::Key_Delete);
    QTest::keyClicks(Find(box), text);
  }

  // Checks the entries and shows what is wrong, as the listener of OK does.
  void Confirm() {
    form_->BeginConfirmation();
    const bool unknown = form_->weightUnknown();
    for (const Vse::Fault& fault : Vse::CheckEntries(form_->Entries(), unknown, QLocale()).faults) {
      form_->ShowFault(fault);
    }
  }

  // What was said once everything that was put off has happened.
  Messages Said() {
    QTest::qWait(0);
    return door_.Take();
  }

  RecordingMessageDoor door_;
  std::unique_ptr<Form1> form_;
};
