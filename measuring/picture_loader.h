// Reads a radiograph beside the windows.
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <thread>

#include "radiograph/reader.h"

namespace Measuring {

class PictureLoader final : public QObject {
  Q_OBJECT
 public:
  explicit PictureLoader(Radiography::RadiographReader reader) : reader_(std::move(reader)) {}

  // Gives up what is being read, if anything. `Loaded` follows from the event loop.
  void Load(const QString& path);

  // `Loaded` does not follow any more.
  void Cancel();

  bool IsBusy() const { return busy_; }

 signals:
  void Loaded(const QString& path, const std::shared_ptr<Radiography::ReadResult>& result);

 private:
  void Deliver(unsigned run, const QString& path,
               const std::shared_ptr<Radiography::ReadResult>& result);

  Radiography::RadiographReader reader_;
  bool busy_ = false;
  unsigned run_ = 0;
  std::jthread thread_;  // last: it ends before what it uses
};

}  // namespace Measuring
