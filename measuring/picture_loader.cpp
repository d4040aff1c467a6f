#include "measuring/picture_loader.h"

#include <QFile>
#include <QMetaObject>

namespace Measuring {

void PictureLoader::Load(const QString& path) {
  Cancel();
  busy_ = true;
  thread_ = std::jthread([this, path, run = run_](const std::stop_token& stop) {
    const std::string name = QFile::encodeName(path).toStdString();
    const auto result =
        std::make_shared<Radiography::ReadResult>(Radiography::ReadRadiograph(name, reader_, stop));
    QMetaObject::invokeMethod(
        this, [this, run, path, result] { Deliver(run, path, result); }, Qt::QueuedConnection);
  });
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
