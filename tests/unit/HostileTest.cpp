// Random programs, as a hostile job or a damaged one might hold them. They are the same on every machine
// and in every run: a failure names the program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/lib/pdf/Postscript2Pdf.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

// The engine's numbers are the same everywhere; the library's distributions are not.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}

  std::size_t below(std::size_t bound) { return engine_() % bound; }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  template <typename Container>
  const auto& oneOf(const Container& container) {
    return container[below(std::size(container))];
  }

 private:
  std::mt19937 engine_;
};

// Names that would let a random program run or grow without end, and those that read single bytes or empty
// lines, whose results depend on the chunk by their nature. Bounded forms of them are below.
constexpr std::string_view kLeftOut[] = {"loop", "for",  "repeat",   "forall", "string",    "array",
                                         "read", "copy", "readline", "image",  "colorimage"};

std::vector<std::string> operatorNames() {
  Postscript2Pdf converter{Matrix()};
  const DictionaryObject& system = converter.interpreter().dictionaries().systemDictionary();
  std::vector<std::string> names;
  for (std::size_t i = 0; i < system.count(); ++i) {
    const std::string& name = system.entryInOrder(i).key;
    if (std::ranges::find(kLeftOut, name) == std::end(kLeftOut)) names.push_back(name);
  }
  return names;
}

constexpr std::string_view kNumbers[] = {
    "0",          "1",           "2",     "3",    "-1",   "7",     "255",   "1.5", "-0.5", "0.0",
    "2147483647", "-2147483648", "1e308", "-1e9", ".001", "16#FF", "360.0", "8",   "4",    "6"};

constexpr std::string_view kOtherOperands[] = {"true",
                                               "false",
                                               "null",
                                               "mark",
                                               "currentfile",
                                               "userdict",
                                               "/v1",
                                               "/v2",
                                               "/FontName",
                                               "/DeviceRGB",
                                               "/Pattern",
                                               "/SubFileDecode",
                                               "(abc)",
                                               "()",
                                               "(a\\(b\\101)",
                                               "<48656c6>",
                                               "<>",
                                               "<~87cURD]~>",
                                               "[1 0 0 1 5 6]",
                                               "[]",
                                               "[3 5]",
                                               "{}",
                                               "{1 2}",
                                               "{exch}",
                                               "matrix",
                                               "5 dict",
                                               "9 string",
                                               "4 array",
                                               "/Helvetica findfont 9 scalefont",
                                               "1 index",
                                               "dup",
                                               "exch",
                                               "pop"};

// Whole phrases, bounded where their operators are not. A # stands for a block of random tokens.
constexpr std::string_view kPhrases[] = {
    "3 {#} repeat",
    "0 1 3 {pop #} for",
    "0 0.5 1.5 {#} for",
    "{# exit} loop",
    "[1 (a) /b] {#} forall",
    "(xyz) {#} forall",
    "3 dict dup /k 1 put {#} forall",
    "{#} stopped",
    "true {#} {#} ifelse",
    "2 copy",
    "/v1 {#} def v1 /v1 null def",  // defined whenever it runs: nothing calls itself
    "/v2 [#] def",
    "[1 2 3] dup 3 /x put",
    "[1] dup dup 0 exch put",
    "currentfile 5 string readstring ab%(>",
    "currentfile 3 string readhexstring 4 1zz4 2 43",
    "currentfile 20 string readline some (line\n",
    "10 20 moveto 30 40 lineto 1 2 3 4 5 6 curveto",
    "gsave # grestore",
    "save # restore",
    "2 2 8 matrix {(abcdef)} image",
    "2 2 8 matrix {<00ff>} false 3 colorimage",
    "1 1 8 matrix {(a)} {(b)} {(c)} true 3 colorimage",
    "4 4 8 matrix {currentfile 8 string readhexstring pop} image 00112233445566778899aabbccddeeff",
    R"(9 dict begin /PaintType 1 def /BBox [0 0 8 8] def /XStep 8 def /YStep 8 def
       /PaintProc {pop 0 0 4 4 rectfill} def currentdict end matrix makepattern setpattern)",
    "5 dict begin # end",
};

class ProgramMaker {
 public:
  ProgramMaker(std::uint32_t seed, const std::vector<std::string>& operators)
      : dice_(seed), operators_(operators) {}

  std::string program() { return block(3 + dice_.below(30), 0) + "\n"; }

  // One with a few bytes replaced or added.
  std::string damagedProgram() {
    std::string text = program();
    for (std::size_t i = 1 + dice_.below(3); i > 0; --i) {
      const std::size_t place = dice_.below(text.size());
      if (dice_.oneIn(2)) {
        text[place] = byte();
      } else {
        text.insert(place, 1, byte());
      }
    }
    return text;
  }

  std::string bytes() {
    std::string text;
    for (std::size_t i = dice_.below(400); i > 0; --i) text += byte();
    return text + "\n";
  }

 private:
  static constexpr int kMaxDepth = 2;

  std::string block(std::size_t tokens, int depth) {
    std::string text;
    for (; tokens > 0; --tokens) text += token(depth) + (dice_.oneIn(20) ? "\r\n" : " ");
    return text;
  }

  std::string token(int depth) {
    switch (dice_.below(8)) {
      case 0:
      case 1:
        return std::string(dice_.oneOf(kNumbers));
      case 2:
      case 3:
        return std::string(dice_.oneOf(kOtherOperands));
      case 4:
        return depth < kMaxDepth ? phrase(depth) : "1";
      case 5:
        return operands() + dice_.oneOf(operators_);
      default:
        return dice_.oneOf(operators_);
    }
  }

  // Several numbers, so that operators of many operands get somewhere.
  std::string operands() {
    std::string text;
    for (std::size_t i = dice_.below(7); i > 0; --i) text += std::string(dice_.oneOf(kNumbers)) + " ";
    return text;
  }

  std::string phrase(int depth) {
    std::string text;
    for (const char c : dice_.oneOf(kPhrases)) {
      if (c == '#') {
        text += block(dice_.below(5), depth + 1);
      } else {
        text += c;
      }
    }
    return text;
  }

  // Any byte, syntax more often than others; but no digit, which could make a loop endless.
  char byte() {
    constexpr std::string_view kSyntax = "()<>[]{}/%\\~ \r\n";
    if (dice_.oneIn(2)) return kSyntax[dice_.below(kSyntax.size())];
    const char c = static_cast<char>(dice_.below(256));
    return c >= '0' && c <= '9' ? 'x' : c;
  }

  Dice dice_;
  const std::vector<std::string>& operators_;
};

// Cuts at random places; a bound of 1 gives single bytes.
std::vector<std::string_view> cut(std::string_view text, Dice& dice, std::size_t bound) {
  std::vector<std::string_view> chunks;
  while (!text.empty()) {
    const std::size_t length = std::min(text.size(), 1 + dice.below(bound));
    chunks.push_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return chunks;
}

struct Result {
  std::string error;
  std::string operands;
  std::string content;  // of a job without an error

  bool operator==(const Result&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Result& result) {
  return out << "error: " << result.error << "\noperands: " << result.operands
             << "\ncontent: " << result.content;
}

std::string shown(Interpreter& interpreter) {
  try {
    return operandsOf(interpreter);
  } catch (const Ex& error) {
    return error.message();
  }
}

// Converts up to the first error.
Result convert(const std::vector<std::string_view>& chunks) {
  PdfObjectList::ofProcess().clear();
  Postscript2Pdf converter{Matrix()};
  Result result;
  for (const std::string_view chunk : chunks) {
    if (!converter.convert(chunk.data(), static_cast<int>(chunk.size()))) {
      result.error = converter.errorText();
      result.content.clear();
      break;
    }
    result.content += converter.pageContent();
  }
  result.operands = shown(converter.interpreter());
  return result;
}

class HostileTest : public testing::Test {
 protected:
  ~HostileTest() override { PdfObjectList::ofProcess().clear(); }

  const std::vector<std::string> operators_ = operatorNames();
};

TEST_F(HostileTest, RandomProgramsGiveOneResultHoweverTheyAreCut) {
  for (std::uint32_t seed = 1; seed <= 1500 && !HasFailure(); ++seed) {
    ProgramMaker maker(seed, operators_);
    const std::string program = seed % 4 == 0 ? maker.damagedProgram() : maker.program();
    Dice dice(seed);
    const Result whole = convert({program});
    EXPECT_EQ(convert(cut(program, dice, 9)), whole) << "seed " << seed << ":\n" << program;
    EXPECT_EQ(convert(cut(program, dice, 1)), whole) << "seed " << seed << ":\n" << program;
  }
}

// An error drops the rest of its chunk, and what was running goes on with the next. Each program is one
// chunk and undamaged, since half a loop might have no end. One may leave a read open, which takes in what
// comes later, so a new converter is begun now and then.
TEST_F(HostileTest, AConverterTakesAnyNumberOfErrors) {
  constexpr std::uint32_t kProgramsOfAConverter = 8;
  Dice dice(1);
  for (std::uint32_t first = 100000; first < 112000; first += kProgramsOfAConverter) {
    Postscript2Pdf converter{Matrix()};
    for (std::uint32_t seed = first; seed < first + kProgramsOfAConverter; ++seed) {
      const std::string program = ProgramMaker(seed, operators_).program();
      converter.convert(program.data(), static_cast<int>(program.size()));
      if (dice.oneIn(5)) converter.startPage(Matrix());
    }
  }
  EXPECT_EQ(convert({"1 2 add "}), (Result{"", "3", ""}));
}

TEST_F(HostileTest, RandomBytesGiveOneResultHoweverTheyAreCut) {
  for (std::uint32_t seed = 1; seed <= 1000 && !HasFailure(); ++seed) {
    const std::string program = ProgramMaker(seed, operators_).bytes();
    Dice dice(seed);
    const Result whole = convert({program});
    EXPECT_EQ(convert(cut(program, dice, 9)), whole) << "seed " << seed;
  }
}

}  // namespace
}  // namespace quillpress
