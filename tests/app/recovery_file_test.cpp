// The places of kept work: who gets which, and what lies there.
#include "app/recovery_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <tuple>

namespace {

KeptWork WorkOf(const QString& name) {
  KeptWork work;
  work.data.emplace();
  work.data->patient.name = name;
  return work;
}

QString NameIn(RecoveryFile& file) {
  QString trouble;
  const std::optional<KeptWork> work = file.Read(trouble);
  EXPECT_TRUE(trouble.isEmpty()) << trouble.toStdString();
  file.TakeOver();
  return work ? work->data->patient.name : QString();
}

class RecoveryFiles : public testing::Test {
 protected:
  QStringList Kept() { return QDir(folder_).entryList({"*.json"}, QDir::Files); }

  // A session that ended without a clean end.
  void LeaveBehind(const KeptWork& work) {
    RecoveryFile file(folder_);
    ASSERT_FALSE(file.IsPending());
    file.Keep(work);
  }

  QTemporaryDir top_;
  const QString folder_ = top_.filePath("share/telmarion");
};

TEST_F(RecoveryFiles, AFirstSessionFindsNothing) {
  const RecoveryFile file(folder_);
  EXPECT_FALSE(file.IsPending());
  EXPECT_FALSE(file.Path().isEmpty());
  EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(RecoveryFiles, TheNextSessionFindsWhatWasKept) {
  LeaveBehind(WorkOf("Kovac Ana"));
  RecoveryFile next(folder_);
  ASSERT_TRUE(next.IsPending());
  EXPECT_EQ(NameIn(next), "Kovac Ana");
  EXPECT_FALSE(next.IsPending());
  EXPECT_EQ(Kept().size(), 1) << "it stays until something else is kept";
}

TEST_F(RecoveryFiles, NothingIsLeftAfterACleanEnd) {
  RecoveryFile file(folder_);
  file.Keep(WorkOf("A"));
  EXPECT_EQ(Kept().size(), 1);
  file.Remove();
  EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(RecoveryFiles, EmptyWorkRemovesWhatWasKept) {
  RecoveryFile file(folder_);
  file.Keep(WorkOf("A"));
  file.Keep({});
  EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(RecoveryFiles, NobodyElseCanReadThem) {
  LeaveBehind(WorkOf("A"));
  const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther;
  EXPECT_FALSE(QFile(QDir(folder_).filePath(Kept().first())).permissions() & others);
}

// Pending work survives everything but a decision.
TEST_F(RecoveryFiles, PendingWorkIsNotOverwritten) {
  LeaveBehind(WorkOf("A"));
  {
    RecoveryFile next(folder_);
    next.Keep(WorkOf("B"));
    next.Remove();
  }
  RecoveryFile later(folder_);
  EXPECT_EQ(NameIn(later), "A");
}

// Until it stands in the new session whole, it is nobody's to overwrite.
TEST_F(RecoveryFiles, WorkThatIsReadIsPendingUntilItIsTakenOver) {
  LeaveBehind(WorkOf("A"));
  RecoveryFile next(folder_);
  QString trouble;
  ASSERT_TRUE(next.Read(trouble));
  EXPECT_TRUE(next.IsPending());
  next.Keep({});
  EXPECT_EQ(Kept().size(), 1);
  next.TakeOver();
  next.Keep({});
  EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(RecoveryFiles, DiscardedWorkIsGone) {
  LeaveBehind(WorkOf("A"));
  RecoveryFile next(folder_);
  next.Discard();
  EXPECT_TRUE(Kept().isEmpty());
  EXPECT_FALSE(next.IsPending());
}

TEST_F(RecoveryFiles, LeftWorkWaitsForAnotherStart) {
  LeaveBehind(WorkOf("A"));
  {
    RecoveryFile next(folder_);
    next.Leave();
    EXPECT_FALSE(next.IsPending());
    next.Keep(WorkOf("B"));
    EXPECT_EQ(Kept().size(), 2);
    next.Remove();
  }
  RecoveryFile later(folder_);
  EXPECT_EQ(NameIn(later), "A");
}

TEST_F(RecoveryFiles, TwoSessionsAtATimeKeepApart) {
  RecoveryFile first(folder_);
  first.Keep(WorkOf("A"));
  RecoveryFile second(folder_);
  EXPECT_FALSE(second.IsPending()) << "the first session is still running";
  second.Keep(WorkOf("B"));
  EXPECT_EQ(Kept().size(), 2);
  first.Remove();
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(RecoveryFiles, OfTwoSessionsThatDiedBothAreOffered) {
  {
    RecoveryFile first(folder_);
    RecoveryFile second(folder_);
    first.Keep(WorkOf("A"));
    second.Keep(WorkOf("B"));
  }
  RecoveryFile third(folder_);
  EXPECT_EQ(NameIn(third), "A");
  third.Remove();
  RecoveryFile fourth(folder_);
  EXPECT_EQ(NameIn(fourth), "B");
}

// A session that was killed leaves its lock; the process it names is gone.
TEST_F(RecoveryFiles, TheLockOfADeadSessionDoesNotHold) {
  LeaveBehind(WorkOf("A"));
  QFile lock(QDir(folder_).filePath("unsaved-case-1.lock"));
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  lock.write("999999999\ntelmarion\n" + QSysInfo::machineHostName().toUtf8() + "\n");
  lock.close();
  RecoveryFile next(folder_);
  EXPECT_TRUE(next.IsPending());
}

TEST_F(RecoveryFiles, DamagedWorkIsPutAside) {
  LeaveBehind(WorkOf("A"));
  const QString path = QDir(folder_).filePath(Kept().first());
  ASSERT_TRUE(QFile::resize(path, 20));
  RecoveryFile next(folder_);
  QString trouble;
  EXPECT_FALSE(next.Read(trouble));
  EXPECT_TRUE(trouble.contains("damaged")) << trouble.toStdString();
  EXPECT_TRUE(trouble.contains(path + ".damaged")) << trouble.toStdString();
  EXPECT_TRUE(QFile::exists(path + ".damaged"));
  EXPECT_TRUE(Kept().isEmpty()) << "it is not offered again";
}

TEST_F(RecoveryFiles, AFolderThatCannotBeMadeKeepsNothingAndSaysSo) {
  QFile file(top_.filePath("share"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  RecoveryFile none(folder_);
  EXPECT_TRUE(none.Path().isEmpty());
  EXPECT_FALSE(none.IsPending());
  EXPECT_FALSE(none.Keep(WorkOf("A")));
  EXPECT_TRUE(none.Keep({})) << "there is nothing to keep";
  none.Remove();
}

// What may stand where a file of ours is wanted. Opening a pipe waits for whoever writes into it.
enum class Obstacle { Pipe, Folder, LinkToAPipe, LinkToADevice, LinkToNothing };
constexpr std::array kObstacles = {Obstacle::Pipe, Obstacle::Folder, Obstacle::LinkToAPipe,
                                   Obstacle::LinkToADevice, Obstacle::LinkToNothing};

void Put(Obstacle obstacle, const QString& path) {
  const auto pipe = [](const QString& at) { return mkfifo(qUtf8Printable(at), 0600) == 0; };
  const auto put = [&] {
    switch (obstacle) {
      case Obstacle::Pipe:
        return pipe(path);
      case Obstacle::Folder:
        return QDir().mkpath(path + "/inside");
      case Obstacle::LinkToAPipe:
        return pipe(path + ".pipe") && QFile::link(path + ".pipe", path);
      case Obstacle::LinkToADevice:
        return QFile::link("/dev/zero", path);
      case Obstacle::LinkToNothing:
        break;
    }
    return QFile::link(path + ".nothing", path);
  };
  ASSERT_TRUE(put()) << path.toStdString();
}

class InTheWay : public testing::TestWithParam<std::tuple<Obstacle, const char*>> {
 protected:
  InTheWay() { QDir().mkpath(folder_); }

  QTemporaryDir top_;
  const QString folder_ = top_.filePath("telmarion");
};

TEST_P(InTheWay, OfAStartAnotherPlaceIsTaken) {
  const auto& [obstacle, name] = GetParam();
  Put(obstacle, QDir(folder_).filePath(name));
  {
    RecoveryFile file(folder_);
    EXPECT_FALSE(file.IsPending());
    EXPECT_TRUE(file.Keep(WorkOf("A")));
  }
  RecoveryFile next(folder_);
  ASSERT_TRUE(next.IsPending());
  EXPECT_EQ(NameIn(next), "A");
}

INSTANTIATE_TEST_SUITE_P(Everywhere, InTheWay,
                         testing::Combine(testing::ValuesIn(kObstacles),
                                          testing::Values("unsaved-case-1.json",
                                                          "unsaved-case-1.lock")));

// The lock of a dead session is taken away under a lock of its own.
TEST_F(RecoveryFiles, APipeInTheWayOfADeadSessionsLockDoesNotBlock) {
  LeaveBehind(WorkOf("A"));
  QFile lock(QDir(folder_).filePath("unsaved-case-1.lock"));
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  lock.write("999999999\ntelmarion\n" + QSysInfo::machineHostName().toUtf8() + "\n");
  lock.close();
  Put(Obstacle::Pipe, lock.fileName() + ".rmlock");
  RecoveryFile next(folder_);
  EXPECT_TRUE(next.Keep(WorkOf("B")));
}

class InTheWayOf : public RecoveryFiles, public testing::WithParamInterface<Obstacle> {};

TEST_P(InTheWayOf, ARunningSessionItIsSaidThatNothingIsKept) {
  RecoveryFile file(folder_);
  ASSERT_TRUE(file.Keep(WorkOf("A")));
  ASSERT_TRUE(QFile::remove(file.Path()));
  Put(GetParam(), file.Path());
  EXPECT_FALSE(file.Keep(WorkOf("B")));
  file.Remove();
  const QFileInfo obstacle(file.Path());
  EXPECT_TRUE(obstacle.exists() || obstacle.isSymLink()) << "it is not ours to take away";
}

TEST_P(InTheWayOf, PendingWorkItIsSaidAndAnotherPlaceTaken) {
  LeaveBehind(WorkOf("A"));
  RecoveryFile next(folder_);
  ASSERT_TRUE(next.IsPending());
  ASSERT_TRUE(QFile::remove(next.Path()));
  Put(GetParam(), next.Path());
  QString trouble;
  EXPECT_FALSE(next.Read(trouble));
  EXPECT_TRUE(trouble.contains("it is not a file")) << trouble.toStdString();
  EXPECT_TRUE(next.Keep(WorkOf("B")));
}

// Where a folder is in the way the damaged work is left alone: nobody has looked at it yet.
TEST_P(InTheWayOf, PuttingDamagedWorkAsideNothingIsLost) {
  LeaveBehind(WorkOf("A"));
  RecoveryFile next(folder_);
  const QString path = next.Path();
  ASSERT_TRUE(QFile::resize(path, 20));
  Put(GetParam(), path + ".damaged");
  QString trouble;
  EXPECT_FALSE(next.Read(trouble));
  const QString place = GetParam() == Obstacle::Folder ? path : path + ".damaged";
  EXPECT_TRUE(trouble.contains('(' + place + ')')) << trouble.toStdString();
  EXPECT_TRUE(next.Keep(WorkOf("B")));
  EXPECT_EQ(QFileInfo(place).size(), 20);
}

INSTANTIATE_TEST_SUITE_P(Everything, InTheWayOf, testing::ValuesIn(kObstacles));

TEST(RecoveryFile, WithoutAFolderKeepsNothing) {
  RecoveryFile none{QString()};
  EXPECT_TRUE(none.Path().isEmpty());
  none.Keep(WorkOf("A"));
}

}  // namespace
