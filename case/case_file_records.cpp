// Splitting a case file into records. All but the comments are single lines.
#include "case/case_file_records.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

#include "case/case_file_labels.h"
#include "case/case_places.h"

namespace Vse {

namespace {

// A text cut at both ends of its comments.
struct Parts {
  QString before;
  QString comments;  // with their label
  QString behind;
};

// Every line end as LF.
QString WithPlainLineEnds(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return text.replace(u'\r', u'\n');
}

// Those with something in them.
QStringList Lines(const QString& text) {
  QStringList lines = WithPlainLineEnds(text).split(u'\n', Qt::SkipEmptyParts);
  lines.removeIf([](const QString& line) { return line.trimmed().isEmpty(); });
  return lines;
}

// Where the comments begin; 0 if they do not. An editor may have stripped the label's last blank.
qsizetype CommentsStart(const QString& text) {
  return text.indexOf(u'\n' + kCommentsLabel.chopped(1).toString()) + 1;
}

// Only this program's own line ends have two LF followed but not preceded by a CR.
bool HasOwnLineEnds(const QString& text) {
  return text.contains(u"\n\n\r\n");
}

// With this program's own line ends the comments end with the first LF CR LF, and the LF of the
// blank record follows it.
std::optional<Parts> SplitOwn(const QString& text) {
  const qsizetype start = CommentsStart(text);
  const qsizetype end = text.indexOf(u"\n\r\n\n", start);
  if (start == 0 || end < 0) return std::nullopt;
  const QString comments = text.mid(start, end - start);
  if (comments.contains(u"\n\r\n")) return std::nullopt;
  return Parts{text.left(start), WithPlainLineEnds(comments), text.mid(end)};
}

// What other line ends have made of this program's, counted in LF.
struct LineEnds {
  qsizetype perRecord = 1;  // after a record
  qsizetype perLine = 1;    // what a line end within the comments has become
};

// From the lines before the comments: after the header there is a blank record, so more. A line
// end too many or too few in one place alters nothing.
LineEnds MeasureLineEnds(const QString& before) {
  std::vector<qsizetype> runs;
  QChar last;
  for (const QChar c : before) {
    if (c == u'\n' && last != u'\n') runs.push_back(0);
    if (c == u'\n') ++runs.back();
    last = c;
  }
  LineEnds ends;
  ends.perLine = std::accumulate(runs.begin(), runs.end(), qsizetype{0},
                                 [](qsizetype a, qsizetype b) { return std::gcd(a, b); });
  const auto middle = runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2);
  std::nth_element(runs.begin(), middle, runs.end());
  ends.perRecord = *middle;
  return ends;
}

// Two cases in one file would give the name of one and the measurements of the other. If a file was
// copied into the comments, its own measurements are between its header and the real ones.
bool HoldsTwoCases(const QString& text, qsizetype comments, qsizetype measures) {
  const QString header = u'\n' + kFileMark.toString().leftJustified(kHeaderWidth);
  const QString measure = u'\n' + kMeasurementPlaces.front().fileLabel.toString();
  const qsizetype copied = text.left(measures).lastIndexOf(measure);
  return text.lastIndexOf(header) > std::max(comments, copied);
}

qsizetype TrailingLineEnds(QStringView text) {
  qsizetype count = 0;
  while (count < text.size() && text[text.size() - 1 - count] == u'\n') ++count;
  return count;
}

// With other line ends, here as plain LF, the comments end before the blank record and the last
// line with the label of the first measurement.
std::optional<Parts> SplitChanged(const QString& text) {
  const qsizetype start = CommentsStart(text);
  const qsizetype end =
      text.lastIndexOf(u'\n' + kMeasurementPlaces.front().fileLabel.toString()) + 1;
  if (start == 0 || end < start || HoldsTwoCases(text, start, end - 1)) return std::nullopt;
  const LineEnds ends = MeasureLineEnds(text.left(start));
  QString comments = text.mid(start, end - start);
  if (TrailingLineEnds(comments) < 2 * ends.perRecord) return std::nullopt;
  comments.chop(2 * ends.perRecord);
  if (ends.perLine > 1) comments.replace(QString(ends.perLine, u'\n'), QStringLiteral("\n"));
  return Parts{text.left(start), comments, text.mid(end)};
}

}  // namespace

QStringList RecordsOf(const QString& text) {
  const std::optional<Parts> parts =
      HasOwnLineEnds(text) ? SplitOwn(text) : SplitChanged(WithPlainLineEnds(text));
  if (!parts) return Lines(text);
  return Lines(parts->before) + QStringList(parts->comments) + Lines(parts->behind);
}

}  // namespace Vse
