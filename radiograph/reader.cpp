#include "radiograph/reader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <new>

#include "radiograph/answer.h"
#include "radiograph/child.h"

namespace Radiography {

std::string FindDecoder(const QString& programFolder) {
  const QDir folder(programFolder);
  for (const char* place :
       {"../libexec/telmarion/telmarion-decode", "../radiograph/telmarion-decode"}) {
    const QString path = QDir::cleanPath(folder.filePath(QLatin1String(place)));
    if (QFileInfo(path).isExecutable()) return QFile::encodeName(path).toStdString();
  }
  return {};
}

namespace {

ReadResult ReadThrough(const RadiographReader& reader, const std::string& path,
                       const std::stop_token& stop) {
  const ChildRun run = RunChild({reader.decoder, std::to_string(reader.limits.memory), path},
                                reader.limits.time, kLongestAnswer, stop);
  switch (run.end) {
    case ChildEnd::Finished:
      return ParseAnswer(run.output);
    case ChildEnd::NotStarted:
      return ReadFailure{ReadTrouble::DecoderMissing, run.reason};
    case ChildEnd::TookTooLong:
      return ReadFailure{ReadTrouble::TookTooLong, {}};
    case ChildEnd::Cancelled:
      return ReadFailure{ReadTrouble::Cancelled, {}};
    case ChildEnd::WroteTooMuch:
      break;
  }
  return ReadFailure{ReadTrouble::DecoderDied, {}};
}

}  // namespace

// The answer of a decoder that had enough memory may still be too large for ours.
ReadResult ReadRadiograph(const std::string& path, const RadiographReader& reader,
                          const std::stop_token& stop) {
  try {
    return ReadThrough(reader, path, stop);
  } catch (const std::bad_alloc&) {
    return ReadFailure{ReadTrouble::TooMuchMemory, {}};
  }
}

}  // namespace Radiography
