// The measuring window in the running program, over a made-up radiograph.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/marking_hand.h"
#include "tests/support/running_program.h"

// Rendered once: it takes a second.
inline const Phantom::Picture& Rendered() {
  static const Phantom::Picture picture = [] {
    Phantom::Setup setup;
    setup.width = 1200;
    setup.height = 1000;
    setup.spacing = {0.36, 0.36};
    return Phantom::Render({}, setup);
  }();
  return picture;
}

class MeasuringProgram {
 public:
  explicit MeasuringProgram(const QString& folder)
      : program(QLocale::c(), {TELMARION_HELP_DIR}, folder, folder + "/settings.json",
                TELMARION_DECODE) {}

  void Open(const QString& path) {
    program.window.MeasureOn(path);
    Wait();
  }
  void Wait() { ASSERT_TRUE(Hand().WaitForPicture()); }
  Measuring::MeasuringWindow& Window() { return *program.window.Measuring(); }
  template <class Widget>
  Widget* In(const char* name) {
    auto* widget = Window().findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  MarkingHand Hand() { return {Window(), Rendered()}; }
  // Every mark by mouse, in the order in which the window asks for them.
  void MarkAll() {
    Hand().MarkBones();
    Hand().Type("magnification", QString::number(Rendered().truth.magnification, 'g', 6));
    Hand().Type("bodyWeight", "70");
  }

  RunningProgram program;
};

class Measure : public testing::Test {
 protected:
  Measure() { Write(FileOf(Rendered())); }
  void Write(const PhantomDicom& file) { EXPECT_TRUE(WritePhantomDicom(path.toStdString(), file)); }

  QTemporaryDir folder;
  QString path = folder.filePath("phantom.dcm");
};
