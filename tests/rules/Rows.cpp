#include "tests/rules/Rows.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string_view>

namespace quillpress::rules {
namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \r") - first + 1);
}

// One character of UTF-8, of the plane whose codes fit into a wide character of any system.
wchar_t takeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
  unsigned code = size == 1 ? lead : lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i)
    code = (code << 6) | (static_cast<unsigned char>(text.at(i)) & 0x3FU);
  text.remove_prefix(size);
  return static_cast<wchar_t>(code);
}

std::wstring decoded(std::string_view text) {
  if (text == "<empty>") return {};
  std::wstring wide;
  while (!text.empty()) {
    const std::size_t end = text.find('>');
    if (text.starts_with("<U+") && end != std::string_view::npos) {
      wide += static_cast<wchar_t>(std::stoul(std::string(text.substr(3, end - 3)), nullptr, 16));
      text.remove_prefix(end + 1);
    } else {
      wide += takeCharacter(text);
    }
  }
  return wide;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Row& row) {
  return out << row.line;
}

std::vector<Row> rowsOf(const std::string& file) {
  constexpr std::string_view kArrow = " =>";
  std::ifstream stream(std::string(QUILLPRESS_RULES_FOLDER) + "/" + file);
  std::vector<Row> rows;
  Row row;
  for (std::string line; std::getline(stream, line);) {
    const std::string_view text = trimmed(line);
    if (text.empty() || text.starts_with("# ")) continue;
    if (text.front() == '@') {
      const std::size_t blank = text.find(' ');
      row.settings[std::string(text.substr(1, blank - 1))] = decoded(trimmed(text.substr(blank)));
      continue;
    }
    const std::size_t arrow = text.find(kArrow);
    if (arrow == std::string_view::npos) {
      ADD_FAILURE() << file << ": no row: " << line;
      continue;
    }
    row.line = line;
    row.input = decoded(trimmed(text.substr(0, arrow)));
    row.output = decoded(trimmed(text.substr(arrow + kArrow.size())));
    rows.push_back(row);
  }
  EXPECT_FALSE(rows.empty()) << file << " has no rows";
  return rows;
}

std::wstring filledIn(std::wstring text, const std::map<std::wstring, std::wstring>& values) {
  for (const auto& [name, value] : values) {
    const std::wstring place = L'{' + name + L'}';
    const std::size_t found = text.find(place);
    if (found != std::wstring::npos) text.replace(found, place.size(), value);
  }
  return text;
}

}  // namespace quillpress::rules
