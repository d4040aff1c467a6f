// Files that appear completely or not at all: written beside their destination, flushed to the
// disk, then moved into place in one step.
#pragma once

#include <QByteArray>
#include <QString>
#include <string>
#include <string_view>

// Who may read and write the file once it is in place.
enum class FileAccess {
  AsBefore,   // whoever could open the file before; a new file as the system's mask has it
  OwnerOnly,  // its owner and nobody else, whatever was there before
};

// Makes or replaces the file at `path`. Gives the system's reason when it fails, else an empty
// text. After a failure the file that was there before is untouched, and no other is left behind.
QString WriteWholeFile(const QString& path, const QByteArray& bytes,
                       FileAccess access = FileAccess::AsBefore);

// The same piece by piece. Each call gives the system's reason when it fails, else an empty text;
// after a failure nothing more may be called. Destroyed without a commit it leaves everything as it
// was.
class WholeFile {
 public:
  WholeFile() = default;
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  ~WholeFile();

  // `path` in the system's bytes, which need not be text. A link stays, and what it leads to is
  // replaced.
  std::string Open(const std::string& path, FileAccess access = FileAccess::AsBefore);
  std::string Write(std::string_view bytes);
  std::string Commit();

  // The file that is there between Open and Commit; empty where the file system can do without.
  const std::string& TemporaryPath() const { return temporary_; }

 private:
  std::string Create(unsigned mode);
  std::string GiveName();

  std::string target_;
  std::string temporary_;
  int descriptor_ = -1;
};
