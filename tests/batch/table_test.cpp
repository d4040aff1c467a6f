// The table for people: aligned, rounded, on one line a hip.
#include "batch/table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

class StringSink final : public Cohort::TextSink {
 public:
  explicit StringSink(std::string& text) : text_(text) {}
  void Write(std::string_view text) override { text_ += text; }
  void Finish() override { ADD_FAILURE() << "the target is not the table's to finish"; }

 private:
  std::string& text_;
};

// The table of these rows, in pieces of one row each.
std::string Table(const std::vector<std::string>& names,
                  const std::vector<Cohort::TableRow>& rows) {
  std::string text;
  StringSink sink(text);
  Cohort::Table table(sink, Cohort::FindColumns(names));
  for (const Cohort::TableRow& row : rows) table.Write({row});
  table.Finish();
  return text + "<end>";
}

Cohort::TableRow Row(const std::vector<std::string>& fields, std::optional<double> rWb = {},
                     std::optional<double> pmax = {}, const std::string& status = "ok") {
  Cohort::TableRow row;
  row.fields = fields;
  row.result.status = status;
  row.result.values[Sila::IndexOf(Sila::Result::RWb)] = rWb;
  row.result.values[Sila::IndexOf(Sila::Result::Pmax)] = pmax;
  return row;
}

TEST(Table, AlignsRoundsAndLeavesTheMeasurementsOut) {
  EXPECT_EQ(
      Table({"name", "lizm[mm]", "headRadius [cm]", "age"},
            {Row({"Ann", "104", "2.5", "7"}, 2.8719, 2066847.58429341),
             Row({"B, \"C\"", "104", "2.5", "61"}, -0.001),
             Row({"D", "x", "2.5", ""}, {}, {}, "error: lizm is not a number")}),
      "name    age    rWb  thetaR  thetaPol  pmaxWb        pmax  status\n"
      "------  ---  -----  ------  --------  ------  ----------  ---------------------------\n"
      "Ann       7   2.87                            2066847.58  ok\n"
      "B, \"C\"   61  -0.01                                        ok\n"
      "D                                                         error: lizm is not a "
      "number\n<end>");
}

TEST(Table, LeavesTheMeasurementsOutHoweverTheyAreWritten) {
  EXPECT_EQ(Table({"name", "LIZM (mm)", "\u200BheadRadius[cm]", "bodyWeight[lb]", "lizm_2"},
                  {Row({"Ann", "104", "2.5", "154", "1"}, 2.8719)}),
            "name  bodyWeight[lb]  lizm_2   rWb  thetaR  thetaPol  pmaxWb  pmax  status\n"
            "----  --------------  ------  ----  ------  --------  ------  ----  ------\n"
            "Ann              154       1  2.87                                  ok\n<end>");
}

TEST(Table, CountsCharactersAndKeepsACellOnItsLine) {
  EXPECT_EQ(Table({"näme"}, {Row({"Müller"}, 1), Row({"a\nb"}, 20)}),
            "näme      rWb  thetaR  thetaPol  pmaxWb  pmax  status\n"
            "------  -----  ------  --------  ------  ----  ------\n"
            "Müller   1.00                                  ok\n"
            "a b     20.00                                  ok\n<end>");
}

TEST(Table, FillsShortRowsUpAndPutsSurplusFieldsLast) {
  EXPECT_EQ(Table({"a", "b"}, {Row({"1", "2"}), Row({"3"}, {}, {}, "error: x"),
                               Row({"4", "5", "6", "\x1b"}, {}, {}, "error: y")}),
            "a  b  rWb  thetaR  thetaPol  pmaxWb  pmax  status\n"
            "-  -  ---  ------  --------  ------  ----  --------\n"
            "1  2                                       ok\n"
            "3                                          error: x\n"
            "4  5                                       error: y  6\n<end>");
}

TEST(Table, IsJustTheHeaderWithoutRows) {
  EXPECT_EQ(Table({"name"}, {}),
            "name  rWb  thetaR  thetaPol  pmaxWb  pmax  status\n"
            "----  ---  ------  --------  ------  ----  ------\n<end>");
}

TEST(Table, KeepsItsWidthsAfterTheFirstThousandRows) {
  std::vector<Cohort::TableRow> rows(1500, Row({"ab"}, 1));
  rows.push_back(Row({"much longer"}, 1e300));
  rows.push_back(Row({"c", "surplus"}, 1));
  const std::string text = Table({"name"}, rows);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1504);
  EXPECT_NE(text.find("\nmuch longer  1e+300  "), std::string::npos);
  EXPECT_NE(text.find("\nc     1.00  "), std::string::npos);
  EXPECT_NE(text.find("  ok      surplus\n"), std::string::npos);
}

TEST(Table, ShowsNumbersWhoseDecimalsSayNothingAsTheyAre) {
  const std::string text = Table({"name"}, {Row({"Ann"}, 12345678901.256, -1e15)});
  EXPECT_NE(text.find(" 12345678901.25 "), std::string::npos) << text;
  EXPECT_NE(text.find(" -1e+15 "), std::string::npos) << text;
}

}  // namespace
