// main() of a fuzz target as an ordinary test: runs the seeds, the kept crashes, and inputs made of
// them that are the same on every machine. Any compiler will do.
//
// Usage: TARGET_fuzz ROUNDS WORDS FOLDER…
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::string ReadWhole(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// Every file of the folders, in the order of their names: folders list theirs in any order.
std::vector<std::string> ReadSeeds(const std::vector<fs::path>& folders) {
  std::vector<fs::path> paths;
  for (const fs::path& folder : folders) {
    if (!fs::exists(folder)) continue;
    for (const auto& entry : fs::directory_iterator(folder)) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> seeds;
  for (const fs::path& path : paths) seeds.push_back(ReadWhole(path));
  return seeds;
}

// A word of a libFuzzer dictionary: bytes between quotes, \xNN for those that cannot be written.
std::string ReadWord(std::string_view line) {
  std::string word;
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    if (line[i] != '\\') {
      word += line[i];
    } else if (line[++i] == 'x') {
      word += static_cast<char>(std::stoi(std::string(line.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      word += line[i];
    }
  }
  return word;
}

std::vector<std::string> ReadWords(const fs::path& path) {
  std::vector<std::string> words;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('"')) words.push_back(ReadWord(line));
  }
  return words;
}

// Makes new inputs of seeds. The standard library's distributions differ between machines.
class Mutator {
 public:
  Mutator(const std::vector<std::string>& seeds, const std::vector<std::string>& words)
      : seeds_(seeds), words_(words) {}

  std::string Next() {
    std::string text = OneOf(seeds_);
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change(text);
    return text;
  }

 private:
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
  const std::string& OneOf(const std::vector<std::string>& texts) {
    return texts[Below(texts.size())];
  }

  // A range of the text, mostly a short one.
  std::string Piece(const std::string& text) {
    const std::size_t begin = Below(text.size() + 1);
    return text.substr(begin, Below(Below(3) == 0 ? text.size() + 1 : 9));
  }

  void Change(std::string& text) {
    const std::size_t at = Below(text.size() + 1);
    switch (Below(6)) {
      case 0:
        if (at < text.size()) text[at] = static_cast<char>(text[at] ^ (1 << Below(8)));
        return;
      case 1:
        text.erase(at, Piece(text).size());
        return;
      case 2:
        text.insert(at, 1, static_cast<char>(Below(256)));
        return;
      case 3:
        text.insert(at, Piece(text));
        return;
      case 4:
        text.insert(at, Piece(OneOf(seeds_)));
        return;
      default:
        const std::string& word = OneOf(words_);
        text.replace(at, Below(2) * word.size(), word);
    }
  }

  const std::vector<std::string>& seeds_;
  const std::vector<std::string>& words_;
  std::mt19937_64 random_{20261115};
};

void Run(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// The seeds, and behind them inputs made of them.
class Inputs {
 public:
  Inputs(const std::vector<std::string>& seeds, const std::vector<std::string>& words)
      : seeds_(seeds), mutator_(seeds, words) {}

  std::string Next() { return next_ < seeds_.size() ? seeds_[next_++] : mutator_.Next(); }

 private:
  const std::vector<std::string>& seeds_;
  std::size_t next_ = 0;
  Mutator mutator_;
};

// An integer that survives the process that counts with it.
std::size_t& SharedCounter() {
  void* memory =
      mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  return *static_cast<std::size_t*>(memory);
}

// Runs `count` inputs in a process of their own. Gives the one that it died of.
std::optional<std::string> FindDeadly(const Inputs& inputs, std::size_t count) {
  std::size_t& done = SharedCounter();
  const pid_t child = fork();
  if (child == 0) {
    for (Inputs mine = inputs; done < count; ++done) Run(mine.Next());
    std::exit(EXIT_SUCCESS);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) std::abort();
  if (status == 0) return std::nullopt;
  Inputs again = inputs;
  for (std::size_t i = 0; i < done; ++i) again.Next();
  return again.Next();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return EXIT_FAILURE;
  const std::size_t rounds = std::stoul(argv[1]);
  const std::vector<std::string> words = ReadWords(argv[2]);
  const std::vector<std::string> seeds = ReadSeeds({argv + 3, argv + argc});
  if (words.empty() || seeds.empty()) {
    std::fputs("there are no words or no seeds\n", stderr);
    return EXIT_FAILURE;
  }
  const auto deadly = FindDeadly({seeds, words}, seeds.size() + rounds);
  if (!deadly) return EXIT_SUCCESS;
  const std::string path = std::string(argv[0]) + ".input";
  std::ofstream(path, std::ios::binary) << *deadly;
  std::fprintf(stderr, "the input that it died of is in %s\n", path.c_str());
  return EXIT_FAILURE;
}
