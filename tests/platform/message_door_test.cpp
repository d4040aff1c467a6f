// The door that people see shows the right box and reads the right answer.
#include "platform/message_door.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "tests/support/open_dialog.h"

namespace {

void Press(QMessageBox& box, QMessageBox::StandardButton button) {
  box.button(button)->click();
}

TEST(MessageDoor, ErrorHasExclamationAndOkAlone) {
  DialogMessageDoor door;
  WhenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), "Error");
    EXPECT_EQ(box.text(), "numeric value expected");
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    EXPECT_TRUE(box.isModal());
    Press(box, QMessageBox::Ok);
  });
  door.ShowError(nullptr, "numeric value expected", "Error");
}

TEST(MessageDoor, MarkupIsShownAsTyped) {
  DialogMessageDoor door;
  WhenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    Press(box, QMessageBox::Ok);
  });
  door.ShowError(nullptr, "<b>case</b>.txt", "Error");
}

TEST(MessageDoor, AShortTextLeavesRoomForALongTitle) {
  DialogMessageDoor door;
  const QString title = "A title that is longer than what it stands above";
  WhenOpen<QMessageBox>([&](QMessageBox& box) {
    const int buttons = 3 * 24;  // of the frame
    EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title) + buttons);
    Press(box, QMessageBox::Ok);
  });
  door.ShowError(nullptr, "No", title);
}

TEST(MessageDoor, YesNoGivesTheAnswer) {
  DialogMessageDoor door;
  for (const auto& [button, answer] : {std::pair(QMessageBox::Yes, MessageDoor::Answer::Yes),
                                       std::pair(QMessageBox::No, MessageDoor::Answer::No)}) {
    WhenOpen<QMessageBox>([button = button](QMessageBox& box) {
      EXPECT_EQ(box.icon(), QMessageBox::Question);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
      Press(box, button);
    });
    EXPECT_EQ(door.AskYesNo(nullptr, "Print results?", "TELMARION print"), answer);
  }
}

TEST(MessageDoor, YesNoCancelGivesTheAnswer) {
  DialogMessageDoor door;
  for (const auto& [button, answer] :
       {std::pair(QMessageBox::Yes, MessageDoor::Answer::Yes),
        std::pair(QMessageBox::No, MessageDoor::Answer::No),
        std::pair(QMessageBox::Cancel, MessageDoor::Answer::Cancel)}) {
    WhenOpen<QMessageBox>([button = button](QMessageBox& box) {
      EXPECT_EQ(box.icon(), QMessageBox::Question);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      Press(box, button);
    });
    EXPECT_EQ(door.AskYesNoCancel(nullptr, "Do you want to save data ?", "TELMARION New"), answer);
  }
}

TEST(MessageDoor, AWarningYesNoHasExclamationAndProposesNo) {
  DialogMessageDoor door;
  for (const auto& [button, answer] : {std::pair(QMessageBox::Yes, MessageDoor::Answer::Yes),
                                       std::pair(QMessageBox::No, MessageDoor::Answer::No)}) {
    WhenOpen<QMessageBox>([button = button](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Sorry");
      EXPECT_EQ(box.text(), "Go on all the same?");
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
      EXPECT_TRUE(box.defaultButton() == box.button(QMessageBox::No));
      Press(box, button);
    });
    EXPECT_EQ(door.WarnYesNo(nullptr, "Go on all the same?", "Sorry"), answer);
  }
  WhenOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
  EXPECT_EQ(door.WarnYesNo(nullptr, "Go on all the same?", "Sorry"), MessageDoor::Answer::No);
}

TEST(MessageDoor, CloseBoxMeansCancelWhereThereIsOne) {
  DialogMessageDoor door;
  for (const bool byKey : {false, true}) {
    WhenOpen<QMessageBox>([byKey](QMessageBox& box) {
      if (byKey) QTest::keyClick(&box, Qt::Key_Escape);
      if (!byKey) box.close();
    });
    EXPECT_EQ(door.AskYesNoCancel(nullptr, "Do you want to save data ?", "TELMARION New"),
              MessageDoor::Answer::Cancel);
  }
}

// What would close any other dialog. Yes, pressed at last, is an answer that none of it can give.
void TryToSlipOutOf(QMessageBox& box) {
  QTest::keyClick(&box, Qt::Key_Escape);
  EXPECT_TRUE(box.isVisible());
  QTest::keyClick(box.button(QMessageBox::No), Qt::Key_Escape);
  EXPECT_TRUE(box.isVisible());
  EXPECT_FALSE(box.close());
  QCloseEvent closed;  // of the frame's button, or of Alt and F4
  QApplication::sendEvent(&box, &closed);
  EXPECT_FALSE(closed.isAccepted());
  box.reject();
  EXPECT_TRUE(box.isVisible());
  Press(box, QMessageBox::Yes);
}

TEST(MessageDoor, EscapeAndTheCloseBoxDoNothingAtAYesNoQuestion) {
  DialogMessageDoor door;
  WhenOpen<QMessageBox>(TryToSlipOutOf);
  EXPECT_EQ(door.AskYesNo(nullptr, "Do you want to save data ?", "TELMARION End"),
            MessageDoor::Answer::Yes);
  WhenOpen<QMessageBox>(TryToSlipOutOf);
  EXPECT_EQ(door.WarnYesNo(nullptr, "Go on all the same?", "Sorry"), MessageDoor::Answer::Yes);
}

// As when the system ends the program while a question is open.
TEST(MessageDoor, AQuestionThatIsTakenAwayIsAnsweredWithNo) {
  DialogMessageDoor door;
  WhenOpen<QMessageBox>([](QMessageBox& box) { box.done(0); });
  EXPECT_EQ(door.AskYesNo(nullptr, "Print results?", "TELMARION print"), MessageDoor::Answer::No);
}

}  // namespace
