// The 3D view in a window, driven as a person would.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <memory>

#include "tests/support/recording_file_dialog.h"
#include "tests/support/recording_message_door.h"
#include "tests/view3d/head_cases.h"
#include "view3d/head_window.h"

class HeadWindowTest : public testing::Test {
 protected:
  void Open(const CaseRecord& record = head_cases::Default(70.0)) {
    record_ = record;
    poleText_ = head_cases::PoleText(record_);
    form_ = std::make_unique<FormGula>(HeadWindowNeeds{
        [this] { return HeadCaseOf(record_, poleText_); }, messages_, files_, QLocale::c()});
    form_->resize(700, 600);
    form_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    QApplication::processEvents();
  }

  template <class Control>
  Control* Find(const char* name) {
    auto* control = form_->findChild<Control*>(name);
    EXPECT_NE(control, nullptr) << name;
    return control;
  }
  RasterView* Picture() { return Find<RasterView>("picTest"); }
  const QImage& Image() { return Picture()->Box().Image(); }
  QTimer* Timer() { return Find<QTimer>("Timer1"); }
  QLabel* PoleLabel() { return Find<QLabel>("LabelP"); }
  const HeadView& View() { return form_->View(); }

  // By the keyboard, as in a list that has the focus.
  void Choose(const char* list, const QString& text) {
    auto* box = Find<QComboBox>(list);
    box->setCurrentIndex(-1);
    do QTest::keyClick(box, Qt::Key_Down);
    while (box->currentText() != text && box->currentIndex() + 1 < box->count());
    ASSERT_EQ(box->currentText(), text);
  }
  void Check(const char* name, bool checked) {
    auto* check = Find<QCheckBox>(name);
    if (check->isChecked() != checked) QTest::keyClick(check, Qt::Key_Space);
  }

  void Press(QPoint at) { QTest::mousePress(Picture(), Qt::LeftButton, {}, at); }
  void Move(QPoint to) {
    QMouseEvent event(QEvent::MouseMove, QPointF(to), Picture()->mapToGlobal(QPointF(to)),
                      Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(Picture(), &event);
  }
  void Release(QPoint at) { QTest::mouseRelease(Picture(), Qt::LeftButton, {}, at); }
  // The clock of the timer is the test's.
  void TickOnce() {
    QTimerEvent event(Timer()->timerId());
    QApplication::sendEvent(Timer(), &event);
  }

  // Pixels of the outlines' colour.
  int CountBlack() {
    int count = 0;
    for (int y = 0; y < Image().height(); ++y) {
      for (int x = 0; x < Image().width(); ++x) count += Image().pixel(x, y) == qRgb(0, 0, 0);
    }
    return count;
  }

  RecordingMessageDoor messages_;
  RecordingFileDialog files_;
  CaseRecord record_;
  QString poleText_;
  std::unique_ptr<FormGula> form_;
};
