// Printing to a PDF file while the system fails at one call after the other.
#include <gtest/gtest.h>

#include "tests/faults/fault_fixture.h"
#include "tests/support/pdf_pages.h"

namespace {

constexpr const char* kReport = "report.pdf";

class ReportFaults : public FaultTest {
 protected:
  void Print() {
    program_.messages.Answers(Answer::Yes);
    program_.printers.Answers(Path(kReport));
    program_.Command("mnuPrint");
    program_.printers.Take();
  }
  void ExpectPrinted() {
    EXPECT_EQ(Files(), QStringList{kReport});
    EXPECT_TRUE(Bytes(kReport).endsWith("%%EOF\n"));
    const PdfPages pdf(Path(kReport));
    EXPECT_EQ(pdf.Count(), 1);
    EXPECT_EQ(pdf.Title(), "TELMARION");
  }
  void ExpectOldOrNew() {
    const QList<Message> said = TakeErrors();
    if (said.isEmpty()) return ExpectPrinted();
    ++refusals_;
    EXPECT_TRUE(IsErrorAbout(said, kReport)) << testing::PrintToString(said);
    EXPECT_EQ(Bytes(kReport), Old());
    EXPECT_EQ(Files(), QStringList{kReport});
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the hourglass stays";
  }

  int refusals_ = 0;
};

TEST_F(ReportFaults, AReportIsWholeOrLeavesTheOldFile) {
  for (const Faults::Fault& fault : Faults::WhileWriting()) {
    const int calls = Faults::Walk(
        program_.folder.path(), fault, [&] { Put(kReport); }, [&] { Print(); },
        [&] { ExpectOldOrNew(); });
    EXPECT_GE(calls, 1);
    Put(kReport);
    Print();
    ExpectPrinted();
    TakeErrors();
    ExpectAlive();
  }
  EXPECT_GT(refusals_, 0);
  EXPECT_TRUE(program_.window.Session().NeedsSaving());
}

}  // namespace
