// Where the work of a session that is not saved yet is kept, so that the end of the desktop
// session, a crash or a power cut does not lose it. It lies beside the user's other application
// data, can be read by that user alone, and is gone after a clean end.
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>
#include <optional>

#include "case/kept_work.h"

class RecoveryFile {
 public:
  // Takes a place in `folder`, which is made when it is not there: one where a session that is no
  // longer running has left its work, else an empty one. Sessions that run at the same time have
  // different places. With an empty `folder`, or one that cannot be written, nothing is ever kept.
  explicit RecoveryFile(const QString& folder);

  // The path of the kept work; empty when there is no place for it.
  const QString& Path() const { return path_; }

  // The place holds work of an earlier session that nobody has decided on. Keep and Remove leave it
  // alone until TakeOver, Discard or Leave.
  bool IsPending() const { return pending_; }

  // Whether the earlier work is nothing but marks on a radiograph; false when it cannot be read.
  bool IsMarksOnly() const;

  // The work of the earlier session. Empty when it cannot be read: its file is then put aside under
  // another name, or left alone where that fails; `trouble` says why and where it is, and nothing
  // is pending any more.
  std::optional<KeptWork> Read(QString& trouble);

  // The earlier work is this session's now; its file stays until the next Keep or Remove.
  void TakeOver() { pending_ = false; }

  // Gives the earlier work up.
  void Discard();

  // Leaves the earlier work for another start, and goes to an empty place.
  void Leave();

  // Keeps the work in place of what was kept before; nothing to keep removes it. False when there
  // is work that could not be kept, or a folder without a place for it.
  bool Keep(const KeptWork& work);

  // A clean end: nothing is left.
  void Remove() { Keep({}); }

 private:
  enum class Wanted { KeptWork, Nothing };
  bool TakePlace(Wanted wanted);
  QString PutAside();

  QString folder_;
  QString path_;
  std::unique_ptr<QLockFile> lock_;
  bool pending_ = false;
};
