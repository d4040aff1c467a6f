#include "radiograph/answer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "radiograph/limits.h"

namespace Radiography {

namespace {

using std::string;
using std::string_view;
using std::vector;

static_assert(std::endian::native == std::endian::little, "numbers are sent as they lie in memory");

// Program and decoder come from one build; the number changes with the fields.
constexpr string_view kMagic = "TELMARION GREY 1";
constexpr std::size_t kLongestText = 1 << 12;
constexpr std::size_t kMostItems = 256;        // windows, tables, notes, values of an attribute
constexpr std::size_t kMostEntries = 1 << 16;  // of a table
constexpr std::size_t kMostLevels = kLongestAnswer / 2;

template <class Value>
constexpr bool kIsPlain = std::is_arithmetic_v<Value> || std::is_enum_v<Value>;

// The fields in their order, for the one who writes and the one who reads.
template <class Stream, class Fields>
void Each(Stream& stream, Fields& f) {
  using Kind = std::remove_const_t<Fields>;
  if constexpr (std::is_same_v<Kind, Window>) {
    stream(f.centre), stream(f.width), stream(f.shape), stream(f.name);
  } else if constexpr (std::is_same_v<Kind, BrightnessTable>) {
    stream(f.first), stream(f.bits), stream(f.entries), stream(f.name);
  } else if constexpr (std::is_same_v<Kind, Patient>) {
    stream(f.familyName), stream(f.givenName), stream(f.birth), stream(f.sex);
  } else if constexpr (std::is_same_v<Kind, ScaleAttributes>) {
    stream(f.pixelSpacing), stream(f.imagerPixelSpacing), stream(f.nominalScannedPixelSpacing);
    stream(f.calibrationType), stream(f.magnification), stream(f.sourceToDetector);
    stream(f.sourceToTable), stream(f.pixelAspectRatio);
  } else if constexpr (std::is_same_v<Kind, ReadFailure>) {
    stream(f.trouble), stream(f.detail);
  } else {
    static_assert(std::is_same_v<Kind, Radiograph>);
    stream(f.width), stream(f.height), stream(f.bits), stream(f.slope), stream(f.intercept);
    stream(f.inverted), stream(f.windows), stream(f.tables);
    stream(f.patient), stream(f.studyDate), stream(f.rowDirection), stream(f.columnDirection);
    stream(f.sopInstanceUid), stream(f.sha256), stream(f.frames), stream(f.scale), stream(f.notes);
    stream(f.levels);
  }
}

class Writer {
 public:
  explicit Writer(std::size_t expected) { bytes_.reserve(expected); }

  template <class Value>
  void operator()(const Value& value) {
    if constexpr (kIsPlain<Value>) {
      bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    } else {
      Each(*this, value);
    }
  }
  void operator()(const string& text) { All(text.substr(0, kLongestText)); }
  void operator()(const Date& date) {
    const auto day = date.value_or(std::chrono::year_month_day{});
    (*this)(date.has_value());
    (*this)(static_cast<int>(day.year()));
    (*this)(static_cast<unsigned>(day.month()));
    (*this)(static_cast<unsigned>(day.day()));
  }
  template <class Item>
  void operator()(const vector<Item>& items) {
    All(items);
  }

  string Take() { return std::move(bytes_); }

 private:
  template <class Items>
  void All(const Items& items) {
    using Item = typename Items::value_type;
    (*this)(static_cast<std::uint32_t>(items.size()));
    if constexpr (kIsPlain<Item>) {
      bytes_.append(reinterpret_cast<const char*>(items.data()), items.size() * sizeof(Item));
    } else {
      for (const Item& item : items) (*this)(item);
    }
  }

  string bytes_;
};

// Takes what Writer wrote. Once something does not fit, nothing more is taken.
class Reader {
 public:
  explicit Reader(string_view bytes) : bytes_(bytes) {}

  template <class Value>
  void operator()(Value& value) {
    if constexpr (kIsPlain<Value>) {
      Copy(&value, sizeof value);
    } else {
      Each(*this, value);
    }
  }
  void operator()(bool& flag) {
    std::uint8_t byte = 0;
    (*this)(byte);
    flag = byte == 1;
    good_ = good_ && byte <= 1;
  }
  void operator()(string& text) { All(text, kLongestText); }
  void operator()(vector<double>& values) { All(values, kMostItems); }
  void operator()(Date& date) {
    bool known = false;
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    (*this)(known), (*this)(year), (*this)(month), (*this)(day);
    if (!known) return;
    date = {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    good_ = good_ && year == static_cast<int>(date->year()) && month < 13 && day < 32 && date->ok();
  }
  void operator()(vector<std::uint16_t>& levels) { All(levels, kMostLevels); }
  template <class Item>
  void operator()(vector<Item>& items) {
    for (std::size_t count = Count(kMostItems, 1); good_ && count > 0; --count) {
      (*this)(items.emplace_back());
    }
  }

  bool TookAll() const { return good_ && bytes_.empty(); }

 private:
  void Copy(void* to, std::size_t size) {
    good_ = good_ && size <= bytes_.size();
    if (!good_ || size == 0) return;
    std::memcpy(to, bytes_.data(), size);
    bytes_.remove_prefix(size);
  }

  // A count of items of at least `size` bytes each, which must be there.
  std::size_t Count(std::size_t most, std::size_t size) {
    std::uint32_t count = 0;
    (*this)(count);
    good_ = good_ && count <= most && count <= bytes_.size() / size;
    return good_ ? count : 0;
  }

  template <class Items>
  void All(Items& items, std::size_t most) {
    using Item = typename Items::value_type;
    items.resize(Count(most, sizeof(Item)));
    Copy(items.data(), items.size() * sizeof(Item));
  }

  string_view bytes_;
  bool good_ = true;
};

bool AllFit(const vector<std::uint16_t>& values, int bits) {
  std::uint16_t all = 0;
  for (const std::uint16_t value : values) all = static_cast<std::uint16_t>(all | value);
  return all >> bits == 0;
}

bool IsSound(const BrightnessTable& table) {
  return table.bits >= 1 && table.bits <= 16 && !table.entries.empty() &&
         table.entries.size() <= kMostEntries && AllFit(table.entries, table.bits);
}

bool IsSound(const Window& window) {
  return std::isfinite(window.centre) && std::isfinite(window.width) && window.width > 0.0 &&
         window.shape <= WindowShape::Sigmoid;
}

template <class Item>
bool AreSound(const vector<Item>& items) {
  return std::all_of(items.begin(), items.end(), [](const Item& item) { return IsSound(item); });
}

bool AreLevelsSound(const Radiograph& picture) {
  if (picture.width < 1 || picture.height < 1 || picture.bits < 1 || picture.bits > 16) {
    return false;
  }
  if (IsTooLarge(picture.width, picture.height, 2, PictureLimits{})) return false;
  const auto pixels = static_cast<std::size_t>(picture.width) * std::size_t(picture.height);
  return picture.levels.size() == pixels && AllFit(picture.levels, picture.bits);
}

bool IsSound(const Radiograph& picture) {
  return AreLevelsSound(picture) && std::isfinite(picture.slope) && picture.slope != 0.0 &&
         std::isfinite(picture.intercept) && AreSound(picture.windows) &&
         AreSound(picture.tables) && picture.patient.sex <= PatientSex::Other &&
         picture.frames >= 1 && picture.sha256.size() == 64;
}

bool IsSound(const ReadFailure& failure) {
  return failure.trouble <= ReadTrouble::Cancelled;
}

template <class Result>
ReadResult Take(Reader reader) {
  Result result;
  reader(result);
  if (!reader.TookAll() || !IsSound(result)) return ReadFailure{ReadTrouble::DecoderDied, {}};
  return result;
}

}  // namespace

string ComposeAnswer(const ReadResult& result) {
  const auto* picture = std::get_if<Radiograph>(&result);
  Writer writer(picture == nullptr ? 4096 : picture->levels.size() * 2 + (1 << 20));
  for (const char letter : kMagic) writer(letter);
  writer(picture != nullptr);
  std::visit(writer, result);
  return writer.Take();
}

ReadResult ParseAnswer(string_view bytes) {
  if (!bytes.starts_with(kMagic) || bytes.size() == kMagic.size()) {
    return ReadFailure{ReadTrouble::DecoderDied, {}};
  }
  const bool isPicture = bytes[kMagic.size()] == 1;
  const Reader reader(bytes.substr(kMagic.size() + 1));
  return isPicture ? Take<Radiograph>(reader) : Take<ReadFailure>(reader);
}

}  // namespace Radiography
