// Files that are cut short, lie or explode: whatever they do ends with a name for it, soon, and in
// the decoder alone.
#include <QtEndian>
#include <chrono>

#include "tests/radiograph/sample_files.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using namespace std::chrono_literals;

struct Tool {
  const char* name;
  const char* command;
};

const Tool kTools[] = {
    {"Plain", "dcmconv +te"},       {"Implicit", "dcmconv +ti"}, {"BigEndian", "dcmconv +tb"},
    {"Deflated", "dcmconv +td"},    {"RunLength", "dcmcrle"},    {"JpegLossless", "dcmcjpeg +e1"},
    {"Jpeg", "dcmcjpeg +ee"},       {"JpegLs", "dcmcjpls +el"},  {"JpegLsNear", "dcmcjpls +en"},
    {"Jpeg2000", "gdcmconv --j2k"},
};

class HostileFile : public ReadingFiles, public testing::WithParamInterface<Tool> {
 protected:
  ReadResult ReadBytes(const QByteArray& bytes) const { return Read(Save("hostile", bytes)); }
};

// At each twelfth of its length; the fuzzer goes further. What is left of a file may still be whole
// when only its padding went; anything else has a name, and not that of a decoder that died.
TEST_P(HostileFile, CutShortAnywhereIsSaid) {
  const PhantomDicom disk = MakeDisk(12, false);
  const QByteArray whole = BytesOf(Convert(GetParam().command, Save(disk)));
  for (qsizetype part = 0; part < 12; ++part) {
    const ReadResult result = ReadBytes(whole.left(whole.size() * part / 12));
    const auto* failure = std::get_if<ReadFailure>(&result);
    ASSERT_NE(failure, nullptr) << part;
    EXPECT_TRUE(failure->trouble == ReadTrouble::CutShort ||
                failure->trouble == ReadTrouble::NotAPicture ||
                failure->trouble == ReadTrouble::Damaged)
        << part << ": " << FailureText(*failure);
  }
}

TEST_P(HostileFile, WithLengthsThatLieIsSaid) {
  const QByteArray whole = BytesOf(Convert(GetParam().command, Save(MakeDisk(12, false))));
  unsigned grain = 7;
  for (int round = 0; round < 8; ++round) {
    QByteArray bytes = whole;
    grain = grain * 1664525U + 1013904223U;
    const auto at = static_cast<qsizetype>((grain >> 8) % static_cast<unsigned>(bytes.size() - 4));
    qToLittleEndian<quint32>(0xFFFFFFFEU - static_cast<unsigned>(round % 3), bytes.data() + at);
    const auto begin = std::chrono::steady_clock::now();
    const ReadResult result = ReadBytes(bytes);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
    const auto* failure = std::get_if<ReadFailure>(&result);
    EXPECT_TRUE(failure == nullptr || failure->trouble != ReadTrouble::DecoderDied) << round;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, HostileFile, testing::ValuesIn(kTools),
                         [](const auto& row) { return std::string(row.param.name); });

class Bomb : public ReadingFiles {};

// 4 MB that inflate to one private element of 3.9 GiB before the picture.
TEST_F(Bomb, DeflatedIsRefusedWithinTheLimits) {
  const QByteArray small = BytesOf(Convert("dcmconv +td", Save(MakeDisk(12, false))));
  const auto uid = small.indexOf("1.2.840.10008.1.2.1.99");
  ASSERT_GT(uid, 0);
  // The head's length stands in its first element.
  const auto length = qFromLittleEndian<quint32>(small.constData() + 140);
  const QByteArray head = small.left(144 + static_cast<qsizetype>(length));
  QProcess zeros;  // blocks that do not depend on each other, so that one may be repeated
  zeros.start("python3",
              {"-c",
               "import sys, zlib\n"
               "c = zlib.compressobj(9, zlib.DEFLATED, -15)\n"
               "put = lambda b: c.compress(b) + c.flush(zlib.Z_FULL_FLUSH)\n"
               "sys.stdout.buffer.write(put(b'\\x09\\0\\x10\\0OB\\0\\0\\0\\0\\0\\xf8'))\n"
               "sys.stdout.buffer.write(put(bytes(1 << 24)) * 248)\n"});
  ASSERT_TRUE(zeros.waitForFinished(120000));
  const std::string path = Save("bomb.dcm", head + zeros.readAllStandardOutput());
  const auto begin = std::chrono::steady_clock::now();
  const ReadFailure failure = MustFail(path);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, reader.limits.time + 5s);
  EXPECT_EQ(failure.trouble, ReadTrouble::TooLarge) << FailureText(failure);
}

TEST_F(Bomb, OfSequencesInSequencesIsRefused) {
  const QByteArray plain = BytesOf(Save(MakeDisk(12, false)));
  const QByteArray item = QByteArray::fromHex("0800401153510000FFFFFFFFFEFF00E0FFFFFFFF");
  const auto length = qFromLittleEndian<quint32>(plain.constData() + 140);
  const QByteArray head = plain.left(144 + static_cast<qsizetype>(length));
  const ReadFailure failure = MustFail(Save("deep.dcm", head + item.repeated(200000)));
  EXPECT_NE(FailureText(failure), "");
}

}  // namespace
