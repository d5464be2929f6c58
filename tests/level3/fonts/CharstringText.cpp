#include "tests/level3/fonts/CharstringText.h"

#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>

namespace quillpress::level3::testing {

namespace {

const std::map<std::string, std::string>& codes() {
  static const std::map<std::string, std::string> table{{"hstem", "\x01"},
                                                        {"vstem", "\x03"},
                                                        {"vmoveto", "\x04"},
                                                        {"rlineto", "\x05"},
                                                        {"hlineto", "\x06"},
                                                        {"vlineto", "\x07"},
                                                        {"rrcurveto", "\x08"},
                                                        {"closepath", "\x09"},
                                                        {"callsubr", "\x0A"},
                                                        {"return", "\x0B"},
                                                        {"hsbw", "\x0D"},
                                                        {"endchar", "\x0E"},
                                                        {"hstemhm", "\x12"},
                                                        {"hintmask", "\x13"},
                                                        {"cntrmask", "\x14"},
                                                        {"rmoveto", "\x15"},
                                                        {"hmoveto", "\x16"},
                                                        {"vstemhm", "\x17"},
                                                        {"rcurveline", "\x18"},
                                                        {"rlinecurve", "\x19"},
                                                        {"vvcurveto", "\x1A"},
                                                        {"hhcurveto", "\x1B"},
                                                        {"callgsubr", "\x1D"},
                                                        {"vhcurveto", "\x1E"},
                                                        {"hvcurveto", "\x1F"},
                                                        {"vstem3", "\x0C\x01"},
                                                        {"hstem3", "\x0C\x02"},
                                                        {"seac", "\x0C\x06"},
                                                        {"sbw", "\x0C\x07"},
                                                        {"div", "\x0C\x0C"},
                                                        {"callothersubr", "\x0C\x10"},
                                                        {"pop", "\x0C\x11"},
                                                        {"setcurrentpoint", "\x0C\x21"},
                                                        {"hflex", "\x0C\x22"},
                                                        {"flex", "\x0C\x23"},
                                                        {"hflex1", "\x0C\x24"},
                                                        {"flex1", "\x0C\x25"},
                                                        {"add", "\x0C\x0A"},
                                                        {"roll", "\x0C\x1E"},
                                                        {"dup", "\x0C\x1B"},
                                                        {"mul", "\x0C\x18"},
                                                        {"index", "\x0C\x1D"},
                                                        {"ifelse", "\x0C\x16"}};
  return table;
}

void appendNumber(std::string& bytes, int value) {
  if (value >= -107 && value <= 107) {
    bytes += static_cast<char>(value + 139);
    return;
  }
  const int distance = std::abs(value) - 108;
  if (distance > 1023) throw std::invalid_argument("the number is too long for these tests");
  bytes += static_cast<char>((value > 0 ? 247 : 251) + distance / 256);
  bytes += static_cast<char>(distance % 256);
}

}  // namespace

std::string charstringOf(std::string_view text) {
  std::string bytes;
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) {
    if (const auto found = codes().find(word); found != codes().end()) {
      bytes += found->second;
    } else if (word.starts_with("#")) {  // a byte of a mask
      bytes += static_cast<char>(std::stoi(word.substr(1), nullptr, 16));
    } else {
      appendNumber(bytes, std::stoi(word));
    }
  }
  return bytes;
}

}  // namespace quillpress::level3::testing
