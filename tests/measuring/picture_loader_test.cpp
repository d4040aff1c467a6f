// Reading a picture beside the windows when memory runs out at the worst moment: that ends no
// program, and is said.
#include "measuring/picture_loader.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <cstdlib>
#include <new>
#include <thread>

#include "tests/support/phantom_dicom.h"

namespace {

// Which of the allocations on other threads than the tests' fails; none at 0.
std::atomic<int> failing = 0;
const std::thread::id kTests = std::this_thread::get_id();

bool Fails() {
  return failing != 0 && std::this_thread::get_id() != kTests && --failing == 0;
}

}  // namespace

void* operator new(std::size_t size) {
  void* const memory = Fails() ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace {

using namespace Measuring;
using Radiography::ReadResult;

class PictureLoaderTest : public testing::Test {
 protected:
  PictureLoaderTest() {
    PhantomDicom picture;
    picture.rows = picture.columns = 16;
    picture.pixels.assign(256, 7);
    EXPECT_TRUE(WritePhantomDicom(path_.toStdString(), picture));
    QObject::connect(&loader_, &PictureLoader::Loaded,
                     [this](const QString& path, const std::shared_ptr<ReadResult>& result) {
                       EXPECT_EQ(path, path_);
                       result_ = *result;
                     });
  }
  ReadResult Load() {
    result_.reset();
    loader_.Load(path_);
    EXPECT_TRUE(loader_.IsBusy());
    EXPECT_TRUE(QTest::qWaitFor([this] { return result_.has_value(); }, 20'000));
    EXPECT_FALSE(loader_.IsBusy());
    return result_.value_or(ReadResult());
  }

  const ReadResult refusal_ = Radiography::ReadFailure{Radiography::ReadTrouble::TooMuchMemory, {}};
  QTemporaryDir folder_;
  QString path_ = folder_.filePath("small.dcm");
  PictureLoader loader_{{TELMARION_DECODE, {}}};
  std::optional<ReadResult> result_;
};

TEST_F(PictureLoaderTest, SaysThatMemoryIsRefusedAtWhicheverPoint) {
  const ReadResult whole = Load();
  ASSERT_TRUE(std::holds_alternative<Radiography::Radiograph>(whole));
  int refused = 0;
  for (int number = 1;; ++number) {
    failing = number;
    const ReadResult result = Load();
    if (failing.exchange(0) != 0) break;  // there were fewer
    EXPECT_EQ(result, refusal_) << number;
    ++refused;
  }
  EXPECT_GT(refused, 10);
  EXPECT_EQ(Load(), whole);
}

TEST_F(PictureLoaderTest, SaysThatThereIsNoMemoryForItsThread) {
  pthread_attr_t usual;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  pthread_attr_t endless = usual;
  ASSERT_EQ(pthread_attr_setstacksize(&endless, std::size_t{1} << 50U), 0);
  ASSERT_EQ(pthread_setattr_default_np(&endless), 0);
  EXPECT_EQ(Load(), refusal_);
  ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
  EXPECT_NE(Load(), refusal_);
}

}  // namespace
