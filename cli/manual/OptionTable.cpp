#include "cli/manual/OptionTable.h"

#include <algorithm>
#include <sstream>

#include "cli/base/Media.h"
#include "cli/base/Options.h"

namespace quillpress::cli {

namespace {

std::string onOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

OptionRow row(const std::string& names, const std::string& values, const std::string& help) {
  const std::size_t comma = names.find(',');
  if (comma == std::string::npos) return {"", names, values, onOneLine(help)};
  return {names.substr(0, comma), names.substr(comma + 1), values, onOneLine(help)};
}

std::vector<std::string> words(const std::string& list) {
  std::vector<std::string> result;
  std::istringstream stream(list);
  for (std::string word; stream >> word;) {
    if (word.ends_with(',')) word.pop_back();
    result.push_back(word);
  }
  return result;
}

}  // namespace

std::string OptionRow::summary() const {
  const std::string mark = "Driver: ";
  std::string text = help.starts_with(mark) ? help.substr(mark.size()) : help;
  text.resize(std::min(text.find_first_of(";:("), text.size()));
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

std::vector<std::string> OptionRow::choices() const {
  if (longName == "--permissions") return words(kPermissionWords);
  if (values == "SIZE") return words(mediaNames());
  if (values == "DIALECT") return {"full", "driver"};
  if (values == "DEGREES") return {"90", "180", "270"};
  if (values == "VERSION") return {"1.4", "1.5", "1.6", "1.7", "2.0"};
  return {};
}

const std::vector<OptionRow>& optionTable() {
  static const std::vector<OptionRow> table{
      row("-h,--help", "", "Show this help and exit"),
      row("--version", "", "Show the version and exit"),
#define FLAG(field, name, help) row(name, "", help),
#define OPTION(type, field, initial, name, values, read, help) row(name, values, help),
#include "cli/base/Options.def"
#undef FLAG
#undef OPTION
  };
  return table;
}

}  // namespace quillpress::cli
