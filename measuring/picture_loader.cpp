#include "measuring/picture_loader.h"

#include <QFile>
#include <QMetaObject>
#include <new>
#include <system_error>

namespace Measuring {

namespace {

Radiography::ReadFailure TooMuchMemory() {
  return {Radiography::ReadTrouble::TooMuchMemory, {}};
}

}  // namespace

// Out of the thread no refusal of memory may get: it would end the program.
void PictureLoader::Load(const QString& path) {
  Cancel();
  busy_ = true;
  const auto result = std::make_shared<Radiography::ReadResult>(TooMuchMemory());
  const auto send = [this, run = run_, path, result] {
    const auto deliver = [this, run, path, result] { Deliver(run, path, result); };
    QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
  };
  const auto read = [this, name = QFile::encodeName(path).toStdString(), result,
                     send](const std::stop_token& stop) {
    try {
      *result = Radiography::ReadRadiograph(name, reader_, stop);
      send();
    } catch (const std::bad_alloc&) {
      *result = TooMuchMemory();  // sets free what was read
      send();
    }
  };
  try {
    thread_ = std::jthread(read);
  } catch (const std::system_error&) {  // not even memory for its stack
    send();
  }
}

void PictureLoader::Cancel() {
  ++run_;
  busy_ = false;
  thread_ = {};  // asks it to stop, and waits until it has
}

// What a cancelled run has sent before it ended is not heard.
void PictureLoader::Deliver(unsigned run, const QString& path,
                            const std::shared_ptr<Radiography::ReadResult>& result) {
  if (run != run_) return;
  busy_ = false;
  emit Loaded(path, result);
}

}  // namespace Measuring
