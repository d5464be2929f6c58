#include "cli/base/PageSelection.h"

#include <algorithm>
#include <charconv>

namespace quillpress::cli {

namespace {

std::optional<std::uint64_t> pageNumber(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number == 0) return std::nullopt;
  return number;
}

}  // namespace

std::optional<PageSelection> PageSelection::parse(std::string_view text) {
  PageSelection selection;
  while (true) {
    const std::size_t comma = text.find(',');
    const auto range = parseRange(text.substr(0, comma));
    if (!range) return std::nullopt;
    selection.ranges_.push_back(*range);
    if (comma == std::string_view::npos) return selection;
    text.remove_prefix(comma + 1);
  }
}

// "9", "2-5", "5-2", "-3" and "7-".
std::optional<PageSelection::Range> PageSelection::parseRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) {
    const auto page = pageNumber(text);
    if (!page) return std::nullopt;
    return Range{*page, page};
  }
  const std::string_view before = text.substr(0, dash);
  const std::string_view behind = text.substr(dash + 1);
  if (before.empty() && behind.empty()) return std::nullopt;
  const auto first = before.empty() ? std::optional<std::uint64_t>(1) : pageNumber(before);
  const auto last = pageNumber(behind);
  if (!first || (!last && !behind.empty())) return std::nullopt;
  return Range{*first, last};
}

std::vector<std::uint64_t> PageSelection::of(std::uint64_t count) const {
  std::vector<std::uint64_t> pages;
  const auto add = [&pages, count](std::uint64_t first, std::uint64_t last) {
    // Cut to what is there before it is counted through: a range may name any number.
    if (first <= last) {
      for (std::uint64_t page = first; page <= std::min(last, count); ++page) pages.push_back(page - 1);
    } else {
      for (std::uint64_t page = std::min(first, count); page >= last; --page) pages.push_back(page - 1);
    }
  };
  if (isEverything()) add(1, count);
  for (const Range& range : ranges_) {
    // A range without an end that begins behind the last page is empty, and does not run backwards.
    if (range.last || range.first <= count) add(range.first, range.last.value_or(count));
  }
  return pages;
}

bool PageSelection::reachesBeyond(std::uint64_t count) const {
  return std::any_of(ranges_.begin(), ranges_.end(), [count](const Range& range) {
    return range.first > count || range.last.value_or(0) > count;
  });
}

}  // namespace quillpress::cli
