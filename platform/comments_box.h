// The box for comments, as quick with a mebibyte as with a line.
#pragma once

#include <QPlainTextEdit>
#include <QString>

// Qt's layout looks through the whole rest of a word for each line that it fills with a part of it,
// and takes its time with every paragraph: words that are very long are wrapped anywhere, and very
// many lines make fewer paragraphs. The text is the same.
class CommentsBox : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit CommentsBox(QWidget* parent = nullptr);

  // Shows `text` from its start. A line break is LF.
  void ShowText(const QString& text);
  // To the letter, no-break spaces included.
  QString Text() const;

 protected:
  // Pastes and drops.
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void PrepareFor(const QString& text);
  void WrapLongWords(int at, int added);
};
