// The command line of telmarion-batch.
#include <CLI/CLI.hpp>
#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <thread>

#include "batch/cohort_run.h"
#include "case/code_page.h"
#include "case/number_text.h"
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
    "pass through; one with a name close to one of these is reported on standard error.\n\n"
    "Uncertainties: columns such as lizm_u[mm], thetaCE_u or bodyWeight_u give the standard\n"
    "uncertainty of a measurement, in the measurement's unit or in their own; magnification and\n"
    "magnification_u give one factor by which all lengths are divided. With any of them, or with\n"
    "--uncertainty, every result gets its standard uncertainty and a coverage interval (pmax_u,\n"
    "pmax_lo95, pmax_hi95). They hold the reading errors, and not the error of the model.";
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

// A whole number from 1 to `most`.
std::optional<std::uint64_t> ReadCount(const std::string& text, std::uint64_t most) {
  std::uint64_t count = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), count);
  const bool whole = fault == std::errc() && end == text.data() + text.size();
  return whole && count >= 1 && count <= most ? std::optional(count) : std::nullopt;
}

constexpr std::uint64_t kLargestSeed = std::numeric_limits<std::uint64_t>::max();

std::string CheckTrials(const std::string& text) {
  if (text == "auto" || ReadCount(text, Uncertainty::kMaxTrials)) return "";
  return "must be auto or a whole number from 1 to " + std::to_string(Uncertainty::kMaxTrials) +
         ", not \"" + text + "\"";
}

std::string CheckSeed(const std::string& text) {
  if (ReadCount(text, kLargestSeed)) return "";
  return "must be a whole number above 0, not \"" + text + "\"";
}

std::string CheckCoverage(const std::string& text) {
  const std::optional<double> coverage = Vse::ReadNumber(text);
  if (coverage && *coverage > 0.0 && *coverage < 1.0) return "";
  return "must be a number between 0 and 1, such as 0.95, not \"" + text + "\"";
}

// The options as they are typed; empty where they are not given.
struct UncertaintyTexts {
  std::string defaults;
  std::string coverage;
  std::string trials;
  std::string seed;
  std::string budget;
};

void AddUncertaintyOptions(CLI::App& app, UncertaintyTexts& texts) {
  app.add_option("--uncertainty", texts.defaults,
                 "A CSV file with the columns column, u, unit and distribution (normal, uniform,\n"
                 "triangular): the uncertainties of rows that have none of their own")
      ->type_name("FILE");
  app.add_option("--coverage", texts.coverage,
                 "The coverage probability of the intervals; default: 0.95")
      ->type_name("P")
      ->check(CLI::Validator(CheckCoverage, ""));
  app.add_option(
         "--trials", texts.trials,
         "The number of trials for each row, or auto: doubled until two doublings in a row\n"
         "move no end of an interval by more than a hundredth of its width, 1048576 at\n"
         "most; default: 8192")
      ->type_name("N")
      ->check(CLI::Validator(CheckTrials, ""));
  app.add_option("--seed", texts.seed,
                 "The number that selects the points of the trials; default: 1")
      ->type_name("N")
      ->check(CLI::Validator(CheckSeed, ""));
  app.add_option("--budget", texts.budget,
                 "Write to this file, for each row and result, the part of the variance that is\n"
                 "due to each measurement")
      ->type_name("FILE");
}

Cohort::UncertaintyOptions OptionsOf(const UncertaintyTexts& texts) {
  constexpr std::size_t kMostAutomatic = std::size_t{1} << 20;  // about 0.1 s for each row
  Cohort::UncertaintyOptions options;
  if (!texts.defaults.empty()) options.defaults = texts.defaults;
  if (!texts.budget.empty()) options.budget = texts.budget;
  options.settings.coverage = Vse::ReadNumber(texts.coverage).value_or(options.settings.coverage);
  options.seed = ReadCount(texts.seed, kLargestSeed).value_or(options.seed);
  options.settings.automatic = texts.trials == "auto";
  if (options.settings.automatic) options.settings.trials = kMostAutomatic;
  const std::optional<std::uint64_t> trials = ReadCount(texts.trials, Uncertainty::kMaxTrials);
  options.settings.trials = trials.value_or(options.settings.trials);
  return options;
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
  UncertaintyTexts uncertainty;
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
  AddUncertaintyOptions(app, uncertainty);
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
  settings.uncertainty = OptionsOf(uncertainty);
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
