// The table for people: aligned, rounded, on one line a hip.
#include "batch/table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

class StringSink final : public Cohort::TextSink {
 public:
  explicit StringSink(std::string& text) : text_(text) {}
  void Write(std::string_view text) override { text_ += text; }
  void Finish() override { text_ += "<end>"; }

 private:
  std::string& text_;
};

std::string Table(const std::string& csv, char delimiter = ',') {
  std::string text;
  Cohort::TableOutput table(std::make_unique<StringSink>(text), delimiter, '\n');
  const std::size_t firstRow = csv.find('\n') + 1;
  table.Write(csv.substr(0, firstRow));
  table.Write(csv.substr(firstRow));
  table.Finish();
  return text;
}

TEST(Table, AlignsRoundsAndLeavesTheMeasuresOut) {
  EXPECT_EQ(Table("name,lizm[mm],headRadius [cm],age,rWb,pmax,status\n"
                  "Ann,104,2.5,7,2.8719,2066847.58429341,ok\n"
                  "\"B, \"\"C\"\"\",104,2.5,61,-0.001,,ok\n"
                  "D,x,2.5,,,,error: lizm is not a number\n"),
            "name    age    rWb        pmax  status\n"
            "------  ---  -----  ----------  ---------------------------\n"
            "Ann       7   2.87  2066847.58  ok\n"
            "B, \"C\"   61  -0.01              ok\n"
            "D                               error: lizm is not a number\n<end>");
}

TEST(Table, LeavesTheMeasuresOutHoweverTheyAreWritten) {
  EXPECT_EQ(Table("name,LIZM (mm),\u200BheadRadius[cm],bodyWeight[lb],lizm_u,rWb,status\n"
                  "Ann,104,2.5,154,1,2.8719,ok\n"),
            "name  bodyWeight[lb]  lizm_u   rWb  status\n"
            "----  --------------  ------  ----  ------\n"
            "Ann              154       1  2.87  ok\n<end>");
}

TEST(Table, CountsCharactersAndKeepsACellOnItsLine) {
  EXPECT_EQ(Table("name;rWb\nMüller;1\n\"a\nb\";20\n", ';'),
            "name      rWb\n------  -----\nMüller   1.00\na b     20.00\n<end>");
}

TEST(Table, PutsSurplusFieldsBehind) {
  EXPECT_EQ(Table("a,status\n1,ok\n2,error: x,3,4\n"),
            "a  status\n-  --------\n1  ok\n2  error: x  3  4\n<end>");
}

TEST(Table, PassesOverAByteOrderMark) {
  EXPECT_EQ(Table("\xEF\xBB\xBF\"name\",rWb\nAnn,1\n"),
            "name   rWb\n----  ----\nAnn   1.00\n<end>");
}

TEST(Table, IsJustTheHeaderWithoutRows) {
  EXPECT_EQ(Table("name,rWb\n"), "name  rWb\n----  ---\n<end>");
}

TEST(Table, KeepsItsWidthsAfterTheFirstThousandRows) {
  std::string csv = "name,rWb\n";
  for (int i = 0; i < 1500; ++i) csv += "ab,1\n";
  csv += "much longer,1e300\nc,1,surplus\n";
  const std::string text = Table(csv);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1504);
  EXPECT_NE(text.find("\nmuch longer  1e300\nc     1.00  surplus\n"), std::string::npos);
}

}  // namespace
