// The command line of telmarion-batch.
#include <CLI/CLI.hpp>
#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <thread>

#include "batch/cohort_run.h"
#include "case/code_page.h"
#include "columns/visible_text.h"

namespace {

constexpr int kAllComputed = 0;
constexpr int kBadInput = 1;
constexpr int kTrouble = 2;

constexpr unsigned kMostThreads = 256;

constexpr const char* kDescription =
    "Computes the resultant hip force and the contact stress for tables of hips.\n\n"
    "Reads CSV with a header row and writes it with the columns rWb, thetaR, thetaPol, pmaxWb,\n"
    "pmax and status added. Columns are found by name, in upper or lower case: lizm, xizm, zizm,\n"
    "Cizm, Hizm (cm), zasuk, thetaCE (degrees), headRadius (m) and, if it is known, bodyWeight\n"
    "(kg). A unit may follow the name: lizm[mm], headRadius(cm), thetaCE[rad]. All other columns\n"
    "pass through; one with a name close to one of these is reported on standard error.";
constexpr const char* kFooter =
    "The status of a row is ok, refused (by the model) or error, with what is wrong. Missing\n"
    "fields at the end of a row are filled with empty ones; extra fields follow the status. Blank\n"
    "lines are skipped. Numbers may have a decimal point or a decimal comma.\n\n"
    "Exit status: 0 every row was computed or refused by the model, 1 some rows had bad input,\n"
    "2 wrong usage, or a problem with a file.";

std::optional<char> ReadDelimiter(const std::string& text) {
  if (text == "," || text == "comma") return ',';
  if (text == ";" || text == "semicolon") return ';';
  if (text == "\t" || text == "\\t" || text == "tab") return '\t';
  return std::nullopt;
}

// As many as there can be, where more are asked for.
std::optional<unsigned> ReadThreads(const std::string& text) {
  const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  if (!digits || text.find_first_not_of('0') == std::string::npos) return std::nullopt;
  unsigned count = kMostThreads;
  std::from_chars(text.data(), text.data() + text.size(), count);
  return std::min(count, kMostThreads);
}

std::string CheckThreads(const std::string& text) {
  return ReadThreads(text) ? "" : "must be a whole number above 0, not \"" + text + "\"";
}

std::string CheckEncoding(const std::string& name) {
  if (Vse::IsCodePage(QByteArray::fromStdString(name))) return "";
  return "\"" + name +
         "\" is not a known code page; known ones include windows-1250 to "
         "windows-1258, ISO-8859-1 to ISO-8859-15, KOI8-R, KOI8-U, IBM850, IBM852, macintosh";
}

std::string CheckDelimiter(const std::string& text) {
  return ReadDelimiter(text) ? "" : "must be comma, semicolon or tab, not \"" + text + "\"";
}

// Names and texts in it come from files.
void Complain(const std::string& sentence) {
  std::fprintf(stderr, "telmarion-batch: %s\n", Cohort::ShownText(sentence).c_str());
}

int Run(const Cohort::CohortSettings& settings) {
  const Cohort::CohortTally tally = Cohort::RunCohort(settings);
  if (tally.bad == 0) return kAllComputed;
  Complain(tally.bad == 1
               ? "1 row had bad input: " + tally.firstBad
               : std::to_string(tally.bad) + " rows had bad input, the first: " + tally.firstBad);
  return kBadInput;
}

// Reads the command line into `settings`. An exit status where nothing is left to do.
std::optional<int> ReadCommandLine(int argc, char** argv, Cohort::CohortSettings& settings) {
  std::string delimiter;
  std::string threads;
  std::string encoding;
  CLI::App app(kDescription, "telmarion-batch");
  app.footer(kFooter);
  app.set_version_flag("--version", "telmarion-batch " TELMARION_VERSION, "Print the version");
  app.set_help_flag("-h,--help", "Print this text");
  app.add_option("FILE", settings.inputs,
                 "CSV files with the same columns, or case files (.txt) and folders of them;\n"
                 "a .txt file that begins with a header row is read as a table;\n"
                 "- or no FILE: standard input")
      ->type_name(" ");
  app.add_option("-o,--output", settings.output,
                 "Write to this file instead of standard output, completely or not at all")
      ->type_name("FILE");
  app.add_option("-d,--delimiter", delimiter,
                 "comma, semicolon or tab; default: detected from the header")
      ->type_name("NAME")
      ->check(CLI::Validator(CheckDelimiter, ""));
  app.add_option("--encoding", encoding,
                 "The code page of case files that are not UTF-8, such as windows-1250;\n"
                 "default: that of the locale's language")
      ->type_name("NAME")
      ->check(CLI::Validator(CheckEncoding, ""));
  app.add_option("--threads", threads,
                 "The number of threads, at most 256; default: one per processor")
      ->type_name("N")
      ->check(CLI::Validator(CheckThreads, ""));
  app.add_flag("--table", settings.table,
               "Print a table for reading instead of CSV: without the measurements, results with\n"
               "two decimals");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      app.exit(error);  // prints the help or the version
      if (std::cout.flush()) return kAllComputed;
      Complain("standard output: cannot be written");
      return kTrouble;
    }
    Complain(std::string(error.what()) + "; --help lists the options");
    return kTrouble;
  }
  settings.delimiter = ReadDelimiter(delimiter);
  settings.threads = ReadThreads(threads).value_or(settings.threads);
  if (!encoding.empty()) settings.encoding = encoding;
  return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  // Whoever closes the pipe has seen enough: end without a word, also when the parent ignores it.
  std::signal(SIGPIPE, SIG_DFL);
  try {
    Cohort::CohortSettings settings;
    settings.threads = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    settings.remark = Complain;
    if (const std::optional<int> status = ReadCommandLine(argc, argv, settings)) return *status;
    return Run(settings);
  } catch (const std::bad_alloc&) {
    Complain("there is not enough memory");
  } catch (const std::exception& error) {
    Complain(error.what());
  }
  return kTrouble;
}
