// One step that can be undone.
#pragma once

#include <QUndoCommand>
#include <functional>

#include "measuring/draft.h"

namespace Measuring {

class DraftChange final : public QUndoCommand {
 public:
  // `show` takes over the draft of before or after. Changes with the same `gesture` that follow
  // each other are one step; none when they end where they began.
  DraftChange(Draft before, Draft after, int gesture, std::function<void(const Draft&)> show)
      : before_(std::move(before)),
        after_(std::move(after)),
        gesture_(gesture),
        show_(std::move(show)) {}

  void undo() override { show_(before_); }
  void redo() override { show_(after_); }
  int id() const override { return gesture_; }
  bool mergeWith(const QUndoCommand* later) override {
    after_ = static_cast<const DraftChange*>(later)->after_;
    setObsolete(after_ == before_);
    return true;
  }

 private:
  Draft before_;
  Draft after_;
  int gesture_;
  std::function<void(const Draft&)> show_;
};

}  // namespace Measuring
