// Files that are no radiograph: each is refused by name, and what reads it lives on.
#include <sys/stat.h>
#include <unistd.h>

#include <QImage>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "tests/radiograph/sample_files.h"
#include "tests/support/little_memory.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using namespace std::chrono_literals;

class Refused : public ReadingFiles {
 protected:
  std::string SaveWith(const std::map<std::string, std::string>& attributes) const {
    PhantomDicom disk = MakeDisk(12, false);
    disk.attributes = attributes;
    return Save(disk);
  }

  // The file with the first `from` in it turned into `to`.
  std::string SavePatched(const std::string& path, const QByteArray& from,
                          const QByteArray& to) const {
    QByteArray bytes = BytesOf(path);
    const auto at = bytes.indexOf(from);
    EXPECT_GE(at, 0);
    return Save("patched", bytes.replace(at, from.size(), to));
  }

  ReadTrouble TroubleOf(const std::string& path) const { return MustFail(path).trouble; }
};

QByteArray Rows(int rows) {
  const QByteArray element = QByteArray::fromHex("28001000") + "US" + QByteArray::fromHex("0200");
  return element + static_cast<char>(rows & 255) + static_cast<char>(rows >> 8);
}

TEST_F(Refused, AFileThatIsNotThere) {
  const ReadFailure failure = MustFail(Path("none"));
  EXPECT_EQ(failure.trouble, ReadTrouble::CannotOpen);
  EXPECT_EQ(FailureText(failure), "The file cannot be read: No such file or directory.");
}

TEST_F(Refused, AFolder) {
  EXPECT_EQ(TroubleOf(Path(".")), ReadTrouble::CannotOpen);
}

TEST_F(Refused, APipeWithoutWaitingForIt) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  const ReadFailure failure = MustFail(Path("pipe"));
  EXPECT_EQ(FailureText(failure), "The file cannot be read: it is no ordinary file.");
}

TEST_F(Refused, FilesThatAreNoPicture) {
  for (const char* bytes : {"", "a", "TELMARION\r\nName: Ana\r\n", "%PDF-1.4", "GIF89a"}) {
    EXPECT_EQ(FailureText(MustFail(Save("text", bytes))),
              "The file is not a picture that can be read.")
        << bytes;
  }
}

TEST_F(Refused, DicomWithoutAPicture) {
  EXPECT_EQ(TroubleOf(SaveWith({{"PixelData", ""}})), ReadTrouble::NotAPicture);
}

TEST_F(Refused, Colour) {
  for (const char* kind : {"RGB", "YBR_FULL", "PALETTE COLOR", "MONOCHROME3"}) {
    EXPECT_EQ(FailureText(MustFail(SaveWith({{"PhotometricInterpretation", kind}}))),
              "The picture is in colour; a radiograph is grey.");
  }
  EXPECT_EQ(TroubleOf(SaveWith({{"SamplesPerPixel", "3"}})), ReadTrouble::Colour);
}

TEST_F(Refused, ASyntaxThatCannotBeRead) {
  // MPEG-2 in the place of explicit little endian, with the length of the text kept.
  const std::string path = Convert("dcmcrle", Save(MakeDisk(12, false)));
  const std::string mpeg = SavePatched(path, QByteArray("1.2.840.10008.1.2.5\0", 20),
                                       QByteArray("1.2.840.10008.1.2.7\0", 20));
  EXPECT_EQ(TroubleOf(mpeg), ReadTrouble::UnknownSyntax);
  const std::string video = SavePatched(Convert("dcmcjpls +el", Save(MakeDisk(12, false))),
                                        "1.2.840.10008.1.2.4.80", "1.2.840.10008.1.2.4.95");
  EXPECT_EQ(TroubleOf(video), ReadTrouble::UnknownSyntax);
}

TEST_F(Refused, MoreThan16384PixelsASide) {
  EXPECT_EQ(FailureText(MustFail(SaveWith({{"Rows", "16385"}}))),
            "The picture is larger than 16,384 pixels a side or 1 GiB when decoded.");
  EXPECT_EQ(TroubleOf(SaveWith({{"Columns", "65535"}})), ReadTrouble::TooLarge);
  EXPECT_EQ(TroubleOf(SaveWith({{"Columns", "16384"}, {"Rows", "16384"}})), ReadTrouble::CutShort);
}

TEST_F(Refused, NoRowsOrNoColumns) {
  EXPECT_EQ(TroubleOf(SaveWith({{"Rows", "0"}})), ReadTrouble::Contradiction);
  EXPECT_EQ(TroubleOf(SaveWith({{"Columns", "0"}})), ReadTrouble::Contradiction);
  EXPECT_EQ(TroubleOf(SaveWith({{"Rows", ""}})), ReadTrouble::Damaged);
}

TEST_F(Refused, MoreRowsThanTheFileHolds) {
  EXPECT_EQ(FailureText(MustFail(SaveWith({{"Rows", "7000"}}))), "The file is cut short.");
}

TEST_F(Refused, BitsThatCannotBe) {
  for (const auto& [keyword, bits] : {std::pair{"BitsAllocated", "12"},
                                      {"BitsAllocated", "32"},
                                      {"BitsStored", "17"},
                                      {"BitsStored", "0"},
                                      {"HighBit", "16"},
                                      {"HighBit", "3"}}) {
    EXPECT_EQ(TroubleOf(SaveWith({{keyword, bits}})), ReadTrouble::Contradiction)
        << keyword << bits;
  }
}

// The size inside the compressed picture is another than that in the file's own attributes.
TEST_F(Refused, ASizeInsideTheCompressedPictureThatIsAnother) {
  for (const char* tool : {"dcmcjpeg +e1", "dcmcjpeg +ee", "dcmcjpls +el", "gdcmconv --j2k"}) {
    const std::string path = Convert(tool, Save(MakeDisk(12, false)));
    const std::string taller = SavePatched(path, Rows(70), Rows(71));
    EXPECT_EQ(FailureText(MustFail(taller)),
              "The file contradicts itself: the compressed picture has another size than the file "
              "says.")
        << tool;
  }
}

struct HeaderRow {
  const char* name;
  const char* tool;
  const char* from;  // hexadecimal: 70 rows and 90 columns as the codestream has them
  const char* to;
};

const HeaderRow kHeaders[] = {
    {"Jpeg", "dcmcjpeg +e1", "0046005A", "FFFFFFFF"},
    {"JpegExtended", "dcmcjpeg +ee", "0046005A", "FFFFFFFF"},
    {"JpegLs", "dcmcjpls +el", "0046005A", "FFFFFFFF"},
    {"JpegWithoutRows", "dcmcjpeg +e1", "0046005A", "0000005A"},
    {"Jpeg2000", "gdcmconv --j2k", "0000005A00000046", "FFFFFFFFFFFFFFFF"},
    {"Jpeg2000WithTinyTiles", "gdcmconv --j2k", "0000005A000000460000000000000000",
     "0000005A000000460000000000000001"},
};

class CodestreamSize : public Refused, public testing::WithParamInterface<HeaderRow> {};

TEST_P(CodestreamSize, IsCheckedBeforeMemoryIsTaken) {
  const HeaderRow& row = GetParam();
  const std::string path = Convert(row.tool, Save(MakeDisk(12, false)));
  const std::string bomb =
      SavePatched(path, QByteArray::fromHex(row.from), QByteArray::fromHex(row.to));
  // With no more memory than the programs need to start: a large allocation would fail.
  RadiographReader poor = reader;
  poor.limits.memory = 700 << 20;
  const ReadResult result = ReadRadiograph(bomb, poor);
  const auto* failure = std::get_if<ReadFailure>(&result);
  ASSERT_NE(failure, nullptr);
  EXPECT_TRUE(failure->trouble == ReadTrouble::Contradiction ||
              failure->trouble == ReadTrouble::Damaged)
      << FailureText(*failure);
}

INSTANTIATE_TEST_SUITE_P(Of, CodestreamSize, testing::ValuesIn(kHeaders), RowName());

TEST_F(Refused, AFileThatTakesTooLong) {
  const std::string path = Save(MakeDisk(16, false, 3000, 3000));
  RadiographReader hasty = reader;
  hasty.limits.time = 5ms;
  const ReadResult result = ReadRadiograph(path, hasty);
  const auto* failure = std::get_if<ReadFailure>(&result);
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(FailureText(*failure), "Decoding the picture takes too long.");
}

// A program in the place of the decoder.
class OtherDecoder : public Refused {
 protected:
  void Become(const char* script) {
    const std::string path = Save("decoder", QByteArray("#!/bin/sh\n") + script + "\n");
    QFile(QString::fromStdString(path)).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    reader.decoder = path;
  }
  ReadFailure Fail() const { return MustFail(Path("any")); }
};

TEST_F(OtherDecoder, ThatIsMissingIsSaid) {
  reader.decoder = Path("none");
  EXPECT_EQ(FailureText(Fail()),
            "The program that decodes pictures cannot be started: No such file or directory.");
  reader.decoder.clear();
  EXPECT_EQ(Fail().trouble, ReadTrouble::DecoderMissing);
}

TEST_F(OtherDecoder, ThatIsKilledIsSaid) {
  for (const char* script : {"kill -KILL $$", "kill -SEGV $$", "exit 1", "exit 0", "echo nonsense",
                             "printf 'TELMARION GREY 1\\001'; kill -KILL $$"}) {
    Become(script);
    EXPECT_EQ(FailureText(Fail()), "The file made the program that decodes pictures fail.")
        << script;
  }
}

TEST_F(OtherDecoder, ThatHangsIsEnded) {
  reader.limits.time = 200ms;
  for (const char* script : {"exec sleep 100", "exec >&-; exec sleep 100"}) {
    Become(script);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Fail().trouble, ReadTrouble::TookTooLong) << script;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  }
}

TEST_F(OtherDecoder, ThatFloodsIsEnded) {
  Become("exec cat /dev/zero");
  EXPECT_EQ(Fail().trouble, ReadTrouble::DecoderDied);
}

#ifdef TELMARION_MEMORY_CAN_BE_LIMITED
TEST_F(Refused, AFileThatNeedsTooMuchMemory) {
  const std::string path = Save(MakeDisk(16, false, 6000, 6000));
  RadiographReader poor = reader;
  poor.limits.memory = 200 << 20;
  const ReadResult result = ReadRadiograph(path, poor);
  const auto* failure = std::get_if<ReadFailure>(&result);
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(FailureText(*failure), "Decoding the picture needs too much memory.");
}

// Down to the last allocation, that of the answer.
TEST_F(Refused, AFileThatNeedsALittleTooMuchMemory) {
  QImage plain(4000, 4000, QImage::Format_Grayscale8);
  plain.fill(90);
  const std::string path = Path("plain.png");
  ASSERT_TRUE(plain.save(QString::fromStdString(path)));
  RadiographReader poor = reader;
  std::uint64_t tooLittle = 120;  // MiB
  std::uint64_t enough = 500;
  while (enough - tooLittle > 1) {
    const std::uint64_t between = (tooLittle + enough) / 2;
    poor.limits.memory = between << 20;
    const ReadResult result = ReadRadiograph(path, poor);
    const auto* failure = std::get_if<ReadFailure>(&result);
    (failure != nullptr ? tooLittle : enough) = between;
    if (failure == nullptr) continue;
    EXPECT_EQ(failure->trouble, ReadTrouble::TooMuchMemory) << FailureText(*failure);
  }
  EXPECT_GT(tooLittle, 120U);
  EXPECT_LT(enough, 500U);
}

TEST_F(OtherDecoder, WhoseAnswerDoesNotFitIntoOurMemoryIsSaid) {
  Become("exec head -c 500000000 /dev/zero");
  const LittleMemory little(100U << 20U);
  const ReadResult result = ReadRadiograph(Path("any"), reader);
  EXPECT_EQ(result, ReadResult(ReadFailure{ReadTrouble::TooMuchMemory, {}}));
}
#endif

TEST_F(OtherDecoder, IsEndedWhenTheReaderIsStopped) {
  Become("echo $$ > \"$0.pid\"; exec sleep 100");
  std::stop_source stop;
  const std::jthread user([&stop] {
    std::this_thread::sleep_for(300ms);
    stop.request_stop();
  });
  const auto begin = std::chrono::steady_clock::now();
  const ReadResult result = ReadRadiograph(Path("any"), reader, stop.get_token());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  ASSERT_NE(std::get_if<ReadFailure>(&result), nullptr);
  EXPECT_EQ(std::get<ReadFailure>(result).trouble, ReadTrouble::Cancelled);
  const int process = BytesOf(reader.decoder + ".pid").trimmed().toInt();
  ASSERT_GT(process, 0);
  EXPECT_NE(kill(process, 0), 0) << "the decoder lives on";
}

TEST_F(OtherDecoder, GetsNoOpenFileOfOurs) {
  const int secret = ::dup(0);  // without close-on-exec
  Become("ls /proc/self/fd | wc -l > \"$0.count\"");
  Fail();
  // Standard input, output, error, and the folder that ls itself reads.
  EXPECT_EQ(BytesOf(reader.decoder + ".count").trimmed(), "4");
  ::close(secret);
}

TEST(Decoder, IsFoundBesideTheProgramAsBuiltOrInstalled) {
  const QTemporaryDir folder;
  const QDir top(folder.path());
  const auto make = [&top](const char* place) {
    top.mkpath(QFileInfo(place).path());
    const QString path = top.filePath(place);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << place;
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    return path.toStdString();
  };
  top.mkpath("bin");
  const QString programs = top.filePath("bin");
  EXPECT_EQ(FindDecoder(programs), "");
  const std::string built = make("radiograph/telmarion-decode");
  EXPECT_EQ(FindDecoder(programs), built);
  const std::string installed = make("libexec/telmarion/telmarion-decode");
  EXPECT_EQ(FindDecoder(programs), installed);
}

}  // namespace
