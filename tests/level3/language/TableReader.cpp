#include "tests/level3/language/TableReader.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quillpress::level3 {

namespace {

constexpr std::string_view kNameEnd = "::";
constexpr std::string_view kArrow = "=>";

class Reader {
 public:
  explicit Reader(const std::filesystem::path& file) : path_(file), lines_(file) {
    if (!lines_) throw std::runtime_error(path_.string() + ": cannot be read");
  }

  std::vector<TableRow> read() {
    while (nextLine()) {
      if (!line_.empty() && line_.front() != '#') readRow();
    }
    return std::move(rows_);
  }

 private:
  bool nextLine() {
    ++number_;
    return static_cast<bool>(std::getline(lines_, line_));
  }

  void readRow() {
    const std::size_t nameEnd = line_.find(kNameEnd);
    if (nameEnd == std::string::npos || line_.front() == ' ') complain("a row begins with its name and ::");
    TableRow row{squeezed(line_.substr(0, nameEnd)), "", "", number_};
    const std::string rest = line_.substr(nameEnd + kNameEnd.size());
    const std::size_t arrow = rest.rfind(kArrow);
    if (arrow != std::string::npos) {
      row.program = squeezed(rest.substr(0, arrow)) + "\n";
      row.expected = squeezed(rest.substr(arrow + kArrow.size()));
    } else {
      if (!squeezed(rest).empty()) complain("no => behind the program");
      readLines(row);
    }
    rows_.push_back(std::move(row));
  }

  void readLines(TableRow& row) {
    while (nextLine()) {
      if (line_.starts_with(kArrow)) {
        row.expected = squeezed(line_.substr(kArrow.size()));
        return;
      }
      row.program += (line_.starts_with("  ") ? line_.substr(2) : line_) + "\n";
    }
    complain("no => behind the program");
  }

  [[noreturn]] void complain(const std::string& what) const {
    throw std::runtime_error(path_.string() + ":" + std::to_string(number_) + ": " + what);
  }

  std::filesystem::path path_;
  std::ifstream lines_;
  std::string line_;
  int number_ = 0;
  std::vector<TableRow> rows_;
};

}  // namespace

std::string squeezed(const std::string& text) {
  std::istringstream words(text);
  std::string result;
  for (std::string word; words >> word;) result += (result.empty() ? "" : " ") + word;
  return result;
}

std::vector<TableRow> readTable(const std::filesystem::path& file) {
  return Reader(file).read();
}

}  // namespace quillpress::level3
