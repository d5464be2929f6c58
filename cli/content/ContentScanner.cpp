#include "cli/content/ContentScanner.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "cli/base/TextScan.h"
#include "cli/content/InlineImage.h"

namespace quillpress::cli {

namespace {

// The bytes with which a mark can begin. Nearly all content text is numbers, which hold none of them.
constexpr std::array<bool, 256> kMayBegin = [] {
  std::array<bool, 256> table{};
  for (const char byte : {'q', 'Q', '/', 'B'}) table[static_cast<unsigned char>(byte)] = true;
  return table;
}();

// A value and not a function, so that the search below is compiled around it.
constexpr auto kMayBeginMark = [](char byte) { return kMayBegin[static_cast<unsigned char>(byte)]; };

bool isTokenEnd(std::string_view text, std::size_t at) {
  return at >= text.size() || isWhite(text[at]);
}

}  // namespace

bool ContentScanner::next(std::size_t limit, ContentMark& mark) {
  limit = std::min(limit, text_.size());
  while (at_ < limit) {
    const char* const begin = text_.data() + at_;
    const char* const found = std::find_if(begin, text_.data() + limit, kMayBeginMark);
    at_ += static_cast<std::size_t>(found - begin);
    if (at_ == limit) return false;
    if (markAt(at_, mark)) {
      at_ = mark.end;
      return true;
    }
    ++at_;
  }
  return false;
}

bool ContentScanner::markAt(std::size_t at, ContentMark& mark) const {
  // The byte may stand inside a name, as the q in /Seq.
  if (at > 0 && !isWhite(text_[at - 1])) return false;
  switch (text_[at]) {
    case 'q':
      return operatorAt(at, "q", ContentMark::Kind::kSave, mark);
    case 'Q':
      return operatorAt(at, "Q", ContentMark::Kind::kRestore, mark);
    case 'B':
      if (!operatorAt(at, "BI", ContentMark::Kind::kInlineImage, mark)) return false;
      // Nothing in the data may be taken for an operator.
      mark.end = at + inlineImageLength(text_.substr(at));
      return true;
    default:
      return objectAt(at, mark);
  }
}

bool ContentScanner::operatorAt(std::size_t at, std::string_view name, ContentMark::Kind kind,
                                ContentMark& mark) const {
  mark = {kind, at, at + name.size(), 0};
  return text_.substr(at, name.size()) == name && isTokenEnd(text_, mark.end);
}

// Recognises /PSI and /PA with a number behind them, the names that the converter gives to objects.
bool ContentScanner::objectAt(std::size_t at, ContentMark& mark) const {
  std::string_view name = text_.substr(at + 1);
  // The two prefixes of the converter; no other name in page content begins with them.
  if (name.starts_with("PSI")) {
    name.remove_prefix(3);
  } else if (name.starts_with("PA")) {
    name.remove_prefix(2);
  } else {
    return false;
  }
  unsigned number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc()) return false;
  mark = {ContentMark::Kind::kObject, at, static_cast<std::size_t>(end - text_.data()), number};
  return isTokenEnd(text_, mark.end);
}

}  // namespace quillpress::cli
