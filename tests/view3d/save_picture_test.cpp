// "Save picture": the bitmaps that it writes and what it says when it cannot.
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/view3d/head_fixture.h"

namespace {

class SavePictureTest : public HeadWindowTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(QDir::setCurrent(folder_.path()));
    Open();
    Choose("Combo1", "High");
    Choose("Combo2", "High");
    Check("Check2", true);
    Check("Check3", true);
  }
  void TearDown() override { QDir::setCurrent(before_); }

  void Save() { QTest::mouseClick(Find<QPushButton>("Command1"), Qt::LeftButton); }
  QImage Shown() { return Picture()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QImage Read(const QString& name) {
    return QImage(folder_.filePath(name)).convertToFormat(QImage::Format_RGB32);
  }
  static FileQuestion Question(const QString& name) {
    return {"save", "Picture (*.bmp)|*.bmp", "bmp", name};
  }

  QString before_ = QDir::currentPath();
  QTemporaryDir folder_;
};

TEST_F(SavePictureTest, WritesExactlyWhatIsShown) {
  files_.Answers(folder_.filePath("hip.bmp"));
  Save();
  EXPECT_EQ(files_.Take(), QList<FileQuestion>{Question("30.bmp")});
  EXPECT_EQ(Read("TEST.BMP"), Shown());
  EXPECT_EQ(Read("hip.bmp"), Shown());
  const QPoint label = PoleLabel()->geometry().topLeft() + QPoint(1, 1);
  EXPECT_EQ(Read("hip.bmp").pixel(label * Picture()->devicePixelRatioF()),
            PaintColour(kButtonFace, QApplication::palette()).rgb())
      << "with the label of the pole";
}

TEST_F(SavePictureTest, HasTwentyFourBitsPerPixel) {
  files_.Answers({});
  Save();
  files_.Take();
  QFile file(folder_.filePath("TEST.BMP"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray bytes = file.readAll();
  EXPECT_EQ(bytes.left(2), "BM");
  EXPECT_EQ(bytes[28], 24);
  EXPECT_EQ(bytes[29], 0);
  const qsizetype row = (Image().width() * 3 + 3) / 4 * 4;
  EXPECT_EQ(bytes.size(), 54 + row * Image().height());
}

QString Output(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
  return QString::fromLocal8Bit(process.readAll()).trimmed();
}

TEST_F(SavePictureTest, AForeignReaderSeesTheSame) {
  files_.Answers(folder_.filePath("hip.bmp"));
  Save();
  files_.Take();
  ASSERT_TRUE(Shown().save(folder_.filePath("shown.png")));
  EXPECT_EQ(Output("identify", {"-format", "%m %wx%h %z", folder_.filePath("hip.bmp")}),
            QStringLiteral("BMP3 %1x%2 8").arg(Image().width()).arg(Image().height()));
  EXPECT_EQ(Output("compare", {"-metric", "AE", folder_.filePath("hip.bmp"),
                               folder_.filePath("shown.png"), "null:"}),
            "0");
}

TEST_F(SavePictureTest, TestBmpIsWrittenEvenWhenTheDialogIsCancelled) {
  files_.Answers({});
  Save();
  EXPECT_EQ(files_.Take().size(), 1);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{"TEST.BMP"});
}

TEST_F(SavePictureTest, TheDialogOpensEvenIfTestBmpFails) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir("TEST.BMP"));
  files_.Answers(folder_.filePath("hip.bmp"));
  Save();
  const QList<Message> said = messages_.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.startsWith("TEST.BMP: ")) << said[0].text.toStdString();
  EXPECT_EQ(files_.Take().size(), 1);
  EXPECT_EQ(Read("hip.bmp"), Shown());
}

TEST_F(SavePictureTest, AFailingFileIsReported) {
  const QString path = folder_.filePath("nowhere/hip.bmp");
  files_.Answers(path);
  Save();
  files_.Take();
  const QList<Message> said = messages_.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].kind, "error");
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.startsWith(path + ": ")) << said[0].text.toStdString();
  EXPECT_FALSE(Read("TEST.BMP").isNull());
}

TEST_F(SavePictureTest, ProposesTheEdgeAngleInWholeDegrees) {
  for (const auto& [degrees, name] :
       {std::pair(29.0, "29.bmp"), std::pair(25.7, "25.bmp"), std::pair(-0.5, "-1.bmp")}) {
    record_.data.inputs.thetaCE = {Sila::DegreesToRadians(degrees)};
    form_->CaseComputed();
    files_.Answers({});
    Save();
    EXPECT_EQ(files_.Take(), QList<FileQuestion>{Question(name)});
  }
}

}  // namespace
