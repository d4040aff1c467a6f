// The About box tells what it must and closes by its button and by the keyboard.
#include "app/about_box.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>

namespace {

QString TextsOf(const Form3& box) {
  QStringList texts;
  for (const QLabel* label : box.findChildren<QLabel*>()) texts.append(label->text());
  return texts.join('\n');
}

TEST(AboutBox, SaysWhatTheProgramIs) {
  const Form3 box;
  EXPECT_EQ(box.objectName(), "Form3");
  EXPECT_EQ(box.windowTitle(), "About TELMARION");
  EXPECT_TRUE(box.isModal());
  const QString texts = TextsOf(box);
  for (const char* part :
       {"TELMARION", "Version " TELMARION_VERSION, "Licence: MIT", "the TELMARION developers",
        "research and teaching", "not a certified medical device"}) {
    EXPECT_TRUE(texts.contains(part)) << part << " in\n" << texts.toStdString();
  }
}

TEST(AboutBox, HasOneButton) {
  const Form3 box;
  const auto buttons = box.findChildren<QPushButton*>();
  ASSERT_EQ(buttons.size(), 1);
  EXPECT_EQ(buttons.first()->text(), "OK");
}

TEST(AboutBox, ShowsThePicture) {
  Form3 box;
  box.show();
  const auto* picture = box.findChild<QLabel*>("imgIcon");
  ASSERT_NE(picture, nullptr);
  EXPECT_FALSE(picture->pixmap().isNull());
}

TEST(AboutBox, NoTextIsCutOff) {
  Form3 box;
  box.show();
  for (const QLabel* label : box.findChildren<QLabel*>()) {
    EXPECT_GE(label->height(), label->heightForWidth(label->width()))
        << label->objectName().toStdString();
  }
}

// Runs the box as the program does and closes it from within.
template <class Close>
void ExpectEndsBy(Close close) {
  Form3 box;
  bool ended = false;
  QTimer::singleShot(0, &box, [&] { close(box); });
  QTimer::singleShot(2000, &box, [&] { box.reject(); });
  QObject::connect(&box, &QDialog::finished, [&] { ended = true; });
  QElapsedTimer clock;
  clock.start();
  box.exec();
  EXPECT_TRUE(ended);
  EXPECT_LT(clock.elapsed(), 1500);
}

TEST(AboutBox, OkCloses) {
  ExpectEndsBy([](Form3& box) { box.findChild<QPushButton*>()->click(); });
}

TEST(AboutBox, EnterCloses) {
  ExpectEndsBy([](Form3& box) { QTest::keyClick(&box, Qt::Key_Return); });
}

TEST(AboutBox, EscapeCloses) {
  ExpectEndsBy([](Form3& box) { QTest::keyClick(&box, Qt::Key_Escape); });
}

}  // namespace
