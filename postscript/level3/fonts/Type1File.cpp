#include "postscript/level3/fonts/Type1File.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/Encryption.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostSubroutines = 65536;

bool isSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r') || character == '\0';
}

bool isDelimiter(char character) {
  switch (character) {
    case '(':
    case ')':
    case '<':
    case '>':
    case '[':
    case ']':
    case '{':
    case '}':
    case '/':
    case '%':
      return true;
    default:
      return false;
  }
}

bool isHexDigit(char character) {
  return std::string_view("0123456789abcdefABCDEF").find(character) != std::string_view::npos;
}

// The segments of a .pfb file in one; nothing of other files.
std::string withoutSegments(std::string_view bytes) {
  std::string result;
  ByteReader reader(bytes);
  while (reader.left() >= 6 && bytes[reader.position()] == '\x80') {
    reader.skip(1);
    const std::uint8_t kind = reader.u8();
    if (kind != 1 && kind != 2) break;
    std::size_t size = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) size |= static_cast<std::size_t>(reader.u8()) << shift;
    result += reader.take(std::min(size, reader.left()));
  }
  return result;
}

std::string bytesOfHex(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits), isHexDigit);
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    unsigned value = 0;
    std::from_chars(digits.data() + i, digits.data() + i + 2, value, 16);
    bytes += static_cast<char>(value);
  }
  return bytes;
}

// What follows `eexec`, as plain bytes behind four that mean nothing: binary, or hexadecimal digits.
std::string privatePart(std::string_view encrypted) {
  while (!encrypted.empty() && isSpace(encrypted[0])) encrypted.remove_prefix(1);
  const bool isHex = encrypted.size() >= 4 && std::ranges::all_of(encrypted.substr(0, 4), isHexDigit);
  return isHex ? decrypted(bytesOfHex(encrypted), kEexecKey) : decrypted(encrypted, kEexecKey);
}

// The words of a PostScript text: names with their slash, brackets, numbers. Strings and comments are passed
// over.
class Words {
 public:
  explicit Words(std::string_view text) : text_(text) {}

  // Empty at the end.
  std::string_view next() {
    skipSpace();
    if (at_ >= text_.size()) return {};
    const std::size_t start = at_++;
    if (isDelimiter(text_[start]) && text_[start] != '/') return text_.substr(start, 1);
    while (at_ < text_.size() && !isSpace(text_[at_]) && !isDelimiter(text_[at_])) ++at_;
    return text_.substr(start, at_ - start);
  }

  std::optional<double> number() {
    const std::size_t start = at_;
    const std::string_view word = next();
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error == std::errc() && end == word.data() + word.size() && std::isfinite(value)) return value;
    at_ = start;
    return std::nullopt;
  }

  std::optional<std::size_t> size() {
    const auto value = number();
    if (!value || *value < 0 || *value > 1e9) return std::nullopt;
    return static_cast<std::size_t>(*value);
  }

  // In brackets or braces.
  std::vector<double> numbers() {
    std::vector<double> result;
    const std::string_view open = next();
    if (open != "[" && open != "{") return result;
    while (const auto value = number()) result.push_back(*value);
    return result;
  }

  // What the word before (RD, -|) has read: one blank, then so many bytes.
  std::optional<std::string_view> binary(std::size_t size) {
    if (at_ + 1 > text_.size() || size > text_.size() - at_ - 1) return std::nullopt;
    const std::string_view bytes = text_.substr(at_ + 1, size);
    at_ += size + 1;
    return bytes;
  }

 private:
  void skipSpace() {
    while (at_ < text_.size() && (isSpace(text_[at_]) || text_[at_] == '%' || text_[at_] == '(')) {
      if (text_[at_] == '%') {
        at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
      } else if (text_[at_] == '(') {
        skipString();
      } else {
        ++at_;
      }
    }
  }

  void skipString() {
    int depth = 0;
    for (; at_ < text_.size(); ++at_) {
      if (text_[at_] == '\\') {
        ++at_;
      } else if (text_[at_] == '(') {
        ++depth;
      } else if (text_[at_] == ')' && --depth == 0) {
        ++at_;
        return;
      }
    }
    at_ = text_.size();
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

class Type1Reader {
 public:
  Type1File read(std::string_view bytes) {
    const std::string joined = withoutSegments(bytes);
    const std::string_view text = joined.empty() ? bytes : joined;
    const std::size_t clearEnd = text.find("eexec");
    if (clearEnd == std::string::npos) throw FontError("a Type 1 font has no encrypted part");
    readClear(text.substr(0, clearEnd));
    file_.privatePart = std::make_unique<const std::string>(privatePart(text.substr(clearEnd + 5)));
    const std::string_view plain = *file_.privatePart;
    readPrivate(plain.substr(std::min<std::size_t>(4, plain.size())));
    if (file_.charstrings.empty()) throw FontError("a Type 1 font has no charstrings");
    return std::move(file_);
  }

 private:
  void readClear(std::string_view text);
  void readEncoding(Words& words);
  void readPrivate(std::string_view text);
  void readHint(std::string_view key, Words& words);
  void readSubroutines(Words& words);
  void readCharstrings(Words& words);

  Type1File file_;
};

void Type1Reader::readClear(std::string_view text) {
  Words words(text);
  for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
    if (word == "/FontName") {
      const std::string_view name = words.next();
      file_.fontName = name.starts_with('/') ? name.substr(1) : name;
    } else if (word == "/FontMatrix") {
      const std::vector<double> values = words.numbers();
      if (values.size() == 6) {
        file_.data.matrix = {values[0], values[1], values[2], values[3], values[4], values[5]};
      }
    } else if (word == "/WeightVector") {
      file_.data.weightVector = words.numbers();
    } else if (word == "/Encoding") {
      readEncoding(words);
    }
  }
}

// StandardEncoding def, or: 256 array ... dup 65 /A put ... def
void Type1Reader::readEncoding(Words& words) {
  std::string_view word = words.next();
  if (word == "StandardEncoding") {
    std::ranges::transform(standardEncoding(), file_.encoding.begin(), [](std::string_view name) {
      return name == ".notdef" ? std::string() : std::string(name);
    });
    return;
  }
  for (; !word.empty() && word != "def" && word != "readonly"; word = words.next()) {
    if (word != "dup") continue;
    const auto code = words.size();
    const std::string_view name = words.next();
    if (code && *code < 256 && name.starts_with('/') && name != "/.notdef") {
      file_.encoding[*code] = name.substr(1);
    }
  }
}

void Type1Reader::readPrivate(std::string_view text) {
  Words words(text);
  CharstringPrivate& hints = file_.data.privateData;
  for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
    if (word == "/lenIV") {
      hints.lenIV = static_cast<int>(std::clamp(words.number().value_or(4), -1.0, 64.0));
    } else if (word == "/Subrs" && hints.subrs.empty()) {
      readSubroutines(words);
    } else if (word == "/CharStrings") {
      readCharstrings(words);
    } else {
      readHint(word, words);
    }
  }
}

void Type1Reader::readHint(std::string_view key, Words& words) {
  CharstringPrivate& hints = file_.data.privateData;
  struct Array {
    std::string_view key;
    std::vector<double> CharstringPrivate::*values;
  };
  static constexpr Array kArrays[] = {{"/BlueValues", &CharstringPrivate::blueValues},
                                      {"/OtherBlues", &CharstringPrivate::otherBlues},
                                      {"/FamilyBlues", &CharstringPrivate::familyBlues},
                                      {"/FamilyOtherBlues", &CharstringPrivate::familyOtherBlues},
                                      {"/StdHW", &CharstringPrivate::stdHW},
                                      {"/StdVW", &CharstringPrivate::stdVW},
                                      {"/StemSnapH", &CharstringPrivate::stemSnapH},
                                      {"/StemSnapV", &CharstringPrivate::stemSnapV}};
  for (const Array& array : kArrays) {
    if (key == array.key) hints.*array.values = words.numbers();
  }
  if (key == "/BlueScale") hints.blueScale = words.number().value_or(hints.blueScale);
  if (key == "/BlueShift") hints.blueShift = words.number().value_or(hints.blueShift);
  if (key == "/BlueFuzz") hints.blueFuzz = words.number().value_or(hints.blueFuzz);
  if (key == "/ExpansionFactor") hints.expansionFactor = words.number().value_or(hints.expansionFactor);
  if (key == "/LanguageGroup") hints.languageGroup = words.number().value_or(0) == 1 ? 1 : 0;
  if (key == "/ForceBold") hints.forceBold = words.next() == "true";
}

// 43 array, then for each: dup 5 12 RD ... NP
void Type1Reader::readSubroutines(Words& words) {
  const auto count = words.size();
  if (!count || *count > kMostSubroutines) return;
  std::vector<std::string>& subroutines = file_.data.privateData.subrs;
  subroutines.resize(*count);
  if (words.next() != "array") return;
  for (std::size_t i = 0; i < *count; ++i) {
    std::string_view word = words.next();
    while (word == "NP" || word == "|" || word == "put" || word == "noaccess") word = words.next();
    if (word != "dup") return;
    const auto index = words.size();
    const auto size = words.size();
    if (!index || !size) return;
    words.next();
    const auto bytes = words.binary(*size);
    if (!bytes || *index >= *count) return;
    subroutines[*index] = *bytes;
  }
}

// 229 dict dup begin, then for each: /A 97 RD ... ND
void Type1Reader::readCharstrings(Words& words) {
  for (std::string_view word = words.next(); !word.empty() && word != "end"; word = words.next()) {
    if (!word.starts_with('/')) continue;
    const std::string_view name = word.substr(1);
    const auto size = words.size();
    if (!size) continue;
    words.next();
    const auto bytes = words.binary(*size);
    if (!bytes) return;
    file_.charstrings.emplace_back(name, *bytes);
  }
}

}  // namespace

Type1File readType1File(std::string_view bytes) {
  return Type1Reader().read(bytes);
}

}  // namespace quillpress::level3
