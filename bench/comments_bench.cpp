// A mebibyte of comments on the screen: in the patient panel, in the case form, and pasted there.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QClipboard>
#include <cstdlib>

#include "bench/mebibyte.h"
#include "platform/comments_box.h"

namespace {

constexpr QSize kPanelSize(400, 120);

// From the text to the painted box. The box is on screen and has shown a usual comment.
void Show(benchmark::State& state, const QString& text) {
  CommentsBox box;
  box.resize(kPanelSize);
  box.show();
  for (auto _ : state) {
    box.ShowText(text);
    QApplication::processEvents();
    if (box.grab().isNull() || box.Text() != text) std::abort();
    state.PauseTiming();
    box.ShowText(QStringLiteral("Control after two years"));
    QApplication::processEvents();
    state.ResumeTiming();
  }
}

// As when a case file is opened: the box is filled before its window is shown.
void Open(benchmark::State& state, const QString& text) {
  for (auto _ : state) {
    CommentsBox box;
    box.ShowText(text);
    box.resize(kPanelSize);
    box.show();
    QApplication::processEvents();
    if (box.grab().isNull()) std::abort();
  }
}

void Paste(benchmark::State& state, const QString& text) {
  QApplication::clipboard()->setText(text);
  for (auto _ : state) {
    CommentsBox box;
    box.resize(kPanelSize);
    box.show();
    box.paste();
    QApplication::processEvents();
    if (box.grab().isNull() || box.Text() != text) std::abort();
  }
}

}  // namespace

int main(int argc, char** argv) {
  return RunWithMebibytes(argc, argv, {{"Show", Show}, {"Open", Open}, {"Paste", Paste}});
}
