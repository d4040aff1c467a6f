// A disk that is really full, or, where none can be mounted, files that may not grow: whole results
// or the old files, and all is well once there is room again. Started by on_small_disk.sh.
#include <gtest/gtest.h>

#include <QProcess>
#include <QPushButton>
#include <optional>

#include "tests/faults/fault_fixture.h"
#include "tests/support/small_files.h"

namespace {

// Leaves room for about so many bytes, for as long as it lives. A disk gives room by pages of 4
// KiB.
class FullDisk {
 public:
  explicit FullDisk(qint64 room) : filler_(QDir::temp().filePath(QStringLiteral("filler"))) {
    if (!IsMounted()) {
      limit_.emplace(static_cast<rlim_t>(room));
      return;
    }
    EXPECT_TRUE(filler_.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray page(4096, 'x');
    while (filler_.write(page) == page.size()) continue;
    EXPECT_TRUE(filler_.resize(filler_.size() - room));
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    if (!limit_) filler_.remove();
  }

  static bool IsMounted() { return !qEnvironmentVariableIsEmpty("TELMARION_SMALL_DISK"); }
  static QString Reason() {
    return IsMounted() ? QStringLiteral("No space left on device")
                       : QStringLiteral("File too large");
  }

 private:
  QFile filler_;
  std::optional<SmallFiles> limit_;
};

class FullDiskTest : public FaultTest {
 protected:
  // The file is the old one, and the user learns why.
  void ExpectRefused(const char* name) {
    const QList<Message> said = TakeErrors();
    EXPECT_TRUE(IsErrorAbout(said, name)) << testing::PrintToString(said);
    EXPECT_TRUE(!said.isEmpty() && said[0].text.contains(FullDisk::Reason()))
        << testing::PrintToString(said);
    EXPECT_EQ(Bytes(name), Old());
    EXPECT_EQ(Files(), QStringList{name});
    ExpectAlive();
  }
};

TEST_F(FullDiskTest, SavingACase) {
  Put("case.txt");
  const auto save = [&] {
    program_.files.Answers(Path("case.txt"));
    program_.Command("mnuSave");
    program_.files.Take();
  };
  {
    const FullDisk full(0);
    save();
    ExpectRefused("case.txt");
    EXPECT_TRUE(program_.window.Session().NeedsSaving());
  }
  save();
  EXPECT_TRUE(Bytes("case.txt").startsWith("TELMARION"));
  EXPECT_FALSE(program_.window.Session().NeedsSaving());
}

TEST_F(FullDiskTest, PrintingAReport) {
  Put("report.pdf");
  const auto print = [&] {
    program_.messages.Answers(Answer::Yes);
    program_.printers.Answers(Path("report.pdf"));
    program_.Command("mnuPrint");
    program_.printers.Take();
  };
  for (const qint64 room : {0, 4096, 8192}) {
    const FullDisk full(room);
    print();
    ExpectRefused("report.pdf");
  }
  print();
  EXPECT_TRUE(TakeErrors().isEmpty());
  EXPECT_TRUE(Bytes("report.pdf").endsWith("%%EOF\n"));
}

TEST_F(FullDiskTest, SavingThePicture) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(program_.folder.path()));
  program_.window.View3D();
  Put("hip.bmp");
  const auto save = [&] {
    program_.files.Answers(Path("hip.bmp"));
    program_.window.HeadView()->findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(program_.files.Take().size(), 1);
  };
  for (const qint64 room : {0, 4096, 512 * 1024}) {
    const FullDisk full(room);
    save();
    const QList<Message> said = TakeErrors();
    ASSERT_EQ(said.size(), 2) << testing::PrintToString(said);
    EXPECT_TRUE(said[0].text.startsWith("TEST.BMP: " + FullDisk::Reason()));
    EXPECT_TRUE(said[1].text.endsWith("hip.bmp: " + FullDisk::Reason()));
    EXPECT_EQ(Bytes("hip.bmp"), Old());
    EXPECT_EQ(Files(), QStringList{"hip.bmp"});
    ExpectAlive();
  }
  save();
  EXPECT_EQ(Bytes("hip.bmp"), Bytes("TEST.BMP"));
  QDir::setCurrent(before);
}

TEST_F(FullDiskTest, ComputingACohort) {
  QByteArray table = "lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight\n";
  table += QByteArray("10.40,0.50,6.00,4.40,16.00,0.0,30.0,0.025,70\n").repeated(20000);
  Put("hips.csv", table);
  Put("out.csv");
  QProcess batch;
  const auto run = [&] {
    batch.start(QStringLiteral(TELMARION_BATCH), {Path("hips.csv"), "--output", Path("out.csv")});
    ASSERT_TRUE(batch.waitForFinished());
  };
  for (const qint64 room : {0, 4096, 1024 * 1024}) {
    const FullDisk full(room);
    run();
    EXPECT_EQ(batch.exitCode(), 2);
    EXPECT_EQ(batch.readAllStandardError(),
              "telmarion-batch: " + Path("out.csv").toLocal8Bit() +
                  ": cannot be written: " + FullDisk::Reason().toLocal8Bit() + "\n");
    EXPECT_EQ(Bytes("out.csv"), Old());
    EXPECT_EQ(Files(), (QStringList{"hips.csv", "out.csv"}));
  }
  run();
  EXPECT_EQ(batch.exitCode(), 0);
  EXPECT_EQ(Bytes("out.csv").count('\n'), 20001);
}

}  // namespace
