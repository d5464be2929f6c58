#include "tests/scripts/runner/ScriptCase.h"

#include <array>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

using Expectation = std::optional<std::string> ScriptCase::*;

struct Keyword {
  std::string_view text;
  Expectation expectation;
  bool isQuoted;
};

constexpr std::array<Keyword, 4> kKeywords{{
    {"% expect:", &ScriptCase::operands, false},
    {"% error:", &ScriptCase::error, false},
    {"% content:", &ScriptCase::content, true},
    {"% prints:", &ScriptCase::prints, true},
}};

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// Replaces \xHH (small letters) by the byte; everything else stays.
std::string withBytes(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isByte = text.substr(i, 2) == "\\x" && i + 3 < text.size() && hexDigit(text[i + 2]) >= 0 &&
                        hexDigit(text[i + 3]) >= 0;
    if (!isByte) {
      result += text[i];
      continue;
    }
    result += static_cast<char>(hexDigit(text[i + 2]) * 16 + hexDigit(text[i + 3]));
    i += 3;
  }
  return result;
}

std::string trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

// A text in quotes, with \n, \\, \" and \xHH.
std::string unquoted(const std::string& text) {
  if (text.size() < 2 || text.front() != '"' || text.back() != '"')
    throw std::runtime_error("expected quotes");
  std::string result;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    const bool isEscape = text[i] == '\\' && i + 2 < text.size() &&
                          std::string_view("n\\\"").find(text[i + 1]) != std::string_view::npos;
    if (isEscape) ++i;
    result += isEscape && text[i] == 'n' ? '\n' : text[i];
  }
  return withBytes(result);
}

// The first keyword in the text and its place; none gives npos.
std::pair<std::size_t, const Keyword*> findKeyword(std::string_view text, std::size_t from) {
  std::pair<std::size_t, const Keyword*> found{std::string_view::npos, nullptr};
  for (const Keyword& keyword : kKeywords) {
    const auto place = text.find(keyword.text, from);
    if (place < found.first) found = {place, &keyword};
  }
  return found;
}

void readExpectations(std::string_view text, ScriptCase& scriptCase) {
  for (auto [place, keyword] = findKeyword(text, 0); keyword != nullptr;) {
    const auto begin = place + keyword->text.size();
    const auto [nextPlace, nextKeyword] = findKeyword(text, begin);
    const std::string value =
        trimmed(text.substr(begin, nextPlace == std::string_view::npos ? nextPlace : nextPlace - begin));
    scriptCase.*keyword->expectation = keyword->isQuoted ? unquoted(value) : withBytes(value);
    place = nextPlace;
    keyword = nextKeyword;
  }
}

bool isSkippedBetweenCases(const std::string& line) {
  const std::string text = trimmed(line);
  return text.empty() || (text.front() == '%' && findKeyword(text, 0).second == nullptr);
}

}  // namespace

std::vector<ScriptCase> readScriptCases(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + ": cannot be read");
  std::vector<ScriptCase> cases;
  std::string script;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (script.empty() && isSkippedBetweenCases(line)) continue;
    const auto place = findKeyword(line, 0).first;
    const bool isLast = place != std::string::npos;
    std::string text = line.substr(0, place);
    if (isLast) text.erase(text.find_last_not_of(" \t") + 1);
    script += withBytes(text) + "\n";
    if (!isLast) continue;
    ScriptCase& scriptCase = cases.emplace_back();
    scriptCase.line = number;
    scriptCase.script = std::exchange(script, {});
    try {
      readExpectations(std::string_view(line).substr(place), scriptCase);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(path + ":" + std::to_string(number) + ": " + error.what());
    }
  }
  if (!script.empty()) throw std::runtime_error(path + ": the last case has no expectation");
  if (cases.empty()) throw std::runtime_error(path + ": no case");
  return cases;
}
