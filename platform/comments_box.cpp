// Wrapping and paragraphs of long comments.
#include "platform/comments_box.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>

namespace {

constexpr auto kUsualWrap = QTextOption::WrapAtWordBoundaryOrAnywhere;
constexpr qsizetype kLongWord = 1000;       // characters
constexpr qsizetype kLongText = 20'000;     // characters: certain to need the scroll bar
constexpr qsizetype kManyLines = 10'000;    // lines, each a paragraph
constexpr qsizetype kLongParagraph = 2000;  // characters

bool IsLineBreak(QChar c) {
  return c == u'\n' || c == QChar::LineSeparator;
}

// Whether somewhere no line may end for long. It surely may at blanks between letters or digits;
// before some signs it may not, blanks or none.
bool HasLongWord(const QString& text) {
  qsizetype start = 0;
  bool afterLetter = false;
  bool afterBlank = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    const bool letter = c.isLetterOrNumber();
    if (IsLineBreak(c) || (letter && afterLetter && afterBlank)) start = i;
    if (i - start >= kLongWord) return true;
    afterBlank = c == u' ' || c == u'\t';
    if (!afterBlank) afterLetter = letter;
  }
  return false;
}

// The lines of a paragraph are divided by line separators, which the box gives back as line breaks.
QString InFewParagraphs(QString text) {
  if (text.count(u'\n') < kManyLines) return text;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'\n') continue;
    if (i - start < kLongParagraph) {
      text[i] = QChar::LineSeparator;
    } else {
      start = i;
    }
  }
  return text;
}

}  // namespace

CommentsBox::CommentsBox(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  connect(document(), &QTextDocument::contentsChange, this,
          [this](int at, int, int added) { WrapLongWords(at, added); });
}

void CommentsBox::ShowText(const QString& text) {
  clear();
  setWordWrapMode(kUsualWrap);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  PrepareFor(text);
  setPlainText(InFewParagraphs(text));
}

// Set before the text comes, so that it is laid out once only.
void CommentsBox::PrepareFor(const QString& text) {
  if (HasLongWord(text)) setWordWrapMode(QTextOption::WrapAnywhere);
  if (text.size() > kLongText) setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

QString CommentsBox::Text() const {
  QString text = document()->toRawText();
  text.replace(QChar::ParagraphSeparator, u'\n');
  text.replace(QChar::LineSeparator, u'\n');
  return text;
}

void CommentsBox::insertFromMimeData(const QMimeData* source) {
  if (isReadOnly() || !source->hasText()) return;
  const QString text = source->text();
  PrepareFor(text);
  textCursor().insertText(InFewParagraphs(text));
  ensureCursorVisible();
}

// However the word has come: typed, or with an undone deletion. Called before it is laid out.
void CommentsBox::WrapLongWords(int at, int added) {
  if (wordWrapMode() != kUsualWrap) return;
  const QTextBlock last = document()->findBlock(at + added);
  for (QTextBlock block = document()->findBlock(at); block.isValid(); block = block.next()) {
    if (HasLongWord(block.text())) return setWordWrapMode(QTextOption::WrapAnywhere);
    if (block == last) return;
  }
}
