#include "cli/base/PagePattern.h"

#include <regex>

namespace quillpress::cli {

namespace {

// As printf writes it; more digits than nine no count of pages has.
const std::regex& placeOfNumber() {
  static const std::regex place("%(0?)([1-9]?)d");
  return place;
}

}  // namespace

std::optional<PagePattern> PagePattern::parse(std::string_view name) {
  std::match_results<std::string_view::const_iterator> match;
  if (!std::regex_search(name.begin(), name.end(), match, placeOfNumber())) return std::nullopt;
  PagePattern pattern;
  pattern.before_ = match.prefix().str();
  pattern.behind_ = match.suffix().str();
  if (std::regex_search(pattern.behind_, placeOfNumber())) return std::nullopt;
  if (match[1].length() > 0) pattern.filler_ = '0';
  if (match[2].length() > 0) pattern.width_ = static_cast<std::size_t>(*match[2].first - '0');
  return pattern;
}

std::string PagePattern::nameOf(std::uint64_t page) const {
  std::string number = std::to_string(page);
  if (number.size() < width_) number.insert(0, width_ - number.size(), filler_);
  return before_ + number + behind_;
}

}  // namespace quillpress::cli
