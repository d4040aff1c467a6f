// Saving the picture of the 3D view while the system fails at one call after the other.
#include <gtest/gtest.h>

#include <QPushButton>

#include "tests/faults/fault_fixture.h"

namespace {

constexpr const char* kFixed = "TEST.BMP";
constexpr const char* kChosen = "hip.bmp";

class PictureFaults : public FaultTest {
 protected:
  void SetUp() override {
    FaultTest::SetUp();
    ASSERT_TRUE(QDir::setCurrent(program_.folder.path()));
    program_.window.View3D();
    SavePicture();
    whole_ = Bytes(kFixed);
    ASSERT_TRUE(whole_.startsWith("BM"));
    ASSERT_EQ(Bytes(kChosen), whole_);
  }
  void TearDown() override { QDir::setCurrent(before_); }

  void SavePicture() {
    program_.files.Answers(Path(kChosen));
    program_.window.HeadView()->findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(program_.files.Take().size(), 1) << "the dialog opens whatever became of TEST.BMP";
  }
  void PutBoth() {
    Put(kFixed);
    Put(kChosen);
  }
  // One message for each picture that is still the old one.
  void ExpectOldOrNew() {
    QList<Message> said = TakeErrors();
    EXPECT_EQ(Files(), (QStringList{kChosen, kFixed}));  // sorted without regard to case
    for (const char* name : {kFixed, kChosen}) {
      if (Bytes(name) == whole_) continue;
      ++refusals_;
      EXPECT_EQ(Bytes(name), Old());
      ASSERT_FALSE(said.isEmpty()) << name << " is the old one, and nobody was told";
      EXPECT_TRUE(IsErrorAbout({said.takeFirst()}, name));
    }
    EXPECT_TRUE(said.isEmpty()) << testing::PrintToString(said);
  }

  QString before_ = QDir::currentPath();
  QByteArray whole_;
  int refusals_ = 0;
};

TEST_F(PictureFaults, EachPictureIsWholeOrLeavesTheOldFile) {
  for (const Faults::Fault& fault : Faults::WhileWriting()) {
    const int calls = Faults::Walk(
        program_.folder.path(), fault, [&] { PutBoth(); }, [&] { SavePicture(); },
        [&] { ExpectOldOrNew(); });
    EXPECT_GE(calls, 2);
    PutBoth();
    SavePicture();
    EXPECT_EQ(Bytes(kFixed), whole_);
    EXPECT_EQ(Bytes(kChosen), whole_);
    ExpectAlive();
  }
  EXPECT_GT(refusals_, 0);
}

}  // namespace
