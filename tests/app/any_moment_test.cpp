// A random walk through the commands. At every step a second program starts on what the first one
// has kept: it must stand where the first one stands.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <array>
#include <memory>
#include <random>
#include <string>

#include "case/case_file.h"
#include "tests/support/running_program.h"

namespace {

using Answer = MessageDoor::Answer;

// What a user sees of the case, and what saving it would write, a line each.
std::string LookAt(RunningProgram& program) {
  QStringList seen;
  for (const char* box : {"txtName", "txtSex", "txtHip", "txtDateOfBirth", "txtBodyWeight",
                          "txtRWb", "txtThetaR", "txtThetaPol", "txtPmaxWb", "txtPmax"}) {
    const auto* line = program.InWindow<QLineEdit>(box);
    if (line->isVisible()) seen << line->accessibleName() + " shows " + line->text();
  }
  seen << (program.InWindow<QLineEdit>("txtRWb")->isEnabled() ? "live" : "grey");
  for (const char* label : {"Picture2", "lblFile", "lblNotice"}) {
    seen << program.InWindow<QLabel>(label)->text();
  }
  seen << (program.InWindow<QLabel>("lblUnsaved")->isVisible() ? "unsaved" : "saved");
  const CaseRecord& record = program.window.Session().Record();
  seen << QString::fromUtf8(Vse::ComposeCaseFile(record, "1.1.2026", QLocale::c()));
  seen << QString::number(static_cast<int>(record.stresses));
  return seen.join('\n').toStdString();
}

class AnyMoment : public testing::TestWithParam<unsigned> {
 protected:
  AnyMoment() : random_(GetParam()) {
    Answer(first_);
    for (const char* weight : {"80", ""}) {
      first_.ConfirmDefaultCase(weight);
      first_.files.Answers(first_.Path(weight[0] == '8' ? "known.txt" : "unknown.txt"));
      first_.window.Save();
    }
  }

  // Every question is answered so that the walk goes on.
  static void Answer(RunningProgram& program) {
    program.messages.OnMessage([&program](const Message& message) {
      const bool keepOn = message.kind == "yes/no/cancel" && message.title != "TELMARION Start";
      if (message.kind != "error") program.messages.Answers(keepOn ? Answer::No : Answer::Yes);
    });
  }

  template <class... Texts>
  QString OneOf(Texts... texts) {
    const std::array<const char*, sizeof...(Texts)> all = {texts...};
    return all[std::uniform_int_distribution<std::size_t>(0, all.size() - 1)(random_)];
  }

  void TypeSomething() {
    const QString box = OneOf("Text10", "Text10", "Text1", "Text9", "Text13", "Text8");
    const QString text = box == "Text10"   ? OneOf("", "60", "70", "x")
                         : box == "Text1"  ? OneOf("10.4", "11", "abc")
                         : box == "Text9"  ? OneOf("30", "20", "-20")
                         : box == "Text13" ? OneOf("0.025", "0.03", "0")
                                           : OneOf("", "Kovac", "Novak");
    first_.Type(box.toUtf8(), text);
  }

  void StepInForm() {
    const QString step = OneOf("type", "type", "type", "ok", "ok", "cancel");
    if (step == "type") TypeSomething();
    if (step == "ok") first_.PressOk();
    if (step == "cancel") first_.PressCancel();
  }

  void StepInWindow() {
    const QString step = OneOf("mnuNew", "mnuOpen", "mnuChange", "mnuChange", "mnuSave");
    if (step == "mnuOpen")
      first_.files.Answers(first_.Path(OneOf("known.txt", "unknown.txt").toUtf8()));
    if (step == "mnuSave") first_.files.Answers(first_.Path("saved.txt"));
    first_.Command(step.toUtf8());
  }

  // The system asks for what is to be kept, and the power ends.
  void CompareWithANextStart() {
    first_.window.KeepWork();
    QTemporaryDir copy;
    QFile kept(QDir(kept_.path()).filePath("unsaved-case-1.json"));
    const bool unsaved = first_.window.Session().NeedsSaving();
    if (!kept.exists()) {
      EXPECT_FALSE(unsaved);
      return;
    }
    ASSERT_TRUE(kept.copy(copy.filePath("unsaved-case-1.json")));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    const std::optional<KeptWork> work = Vse::ParseKeptWork(kept.readAll());
    RunningProgram next(QLocale::c(), {}, copy.path());
    Answer(next);
    next.window.OfferKeptWork();
    next.messages.Take();
    ASSERT_TRUE(work);
    EXPECT_EQ(work->data.has_value(), unsaved);
    EXPECT_EQ(next.FormIsOpen(), work->entries.has_value());
    if (unsaved && next.FormIsOpen() == first_.FormIsOpen()) {
      EXPECT_EQ(LookAt(next), LookAt(first_));
    }
    if (!next.FormIsOpen()) return;
    EXPECT_EQ(next.Form().Entries(), first_.Form().Entries());
    EXPECT_EQ(next.Form().weightUnknown(), first_.Form().weightUnknown());
  }

  std::mt19937 random_;
  QTemporaryDir kept_;
  RunningProgram first_{QLocale::c(), {}, kept_.path()};
};

TEST_P(AnyMoment, ANextStartStandsWhereTheProgramEnded) {
  constexpr int kSteps = 60;
  for (int step = 0; step < kSteps && !HasFailure(); ++step) {
    first_.FormIsOpen() ? StepInForm() : StepInWindow();
    first_.messages.Take();
    CompareWithANextStart();
  }
}

INSTANTIATE_TEST_SUITE_P(Walks, AnyMoment, testing::Range(1U, 5U));

}  // namespace
