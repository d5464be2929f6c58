#include "postscript/level3/document/CommentScanner.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quillpress::level3 {

namespace {

// Lines of comments are at most 255 characters; others need not be kept.
constexpr std::size_t kLongestLine = 1024;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  return text;
}

// A value in parentheses is a string of the language; its escapes are few.
std::string textValue(std::string_view value) {
  if (value.size() < 2 || value.front() != '(' || value.back() != ')') return std::string(value);
  std::string text;
  const std::string_view inside = value.substr(1, value.size() - 2);
  for (std::size_t index = 0; index < inside.size(); ++index) {
    if (inside[index] != '\\' || index + 1 == inside.size()) {
      text += inside[index];
      continue;
    }
    ++index;
    unsigned code = 0;
    std::size_t digits = 0;
    while (digits < 3 && index + digits < inside.size() && inside[index + digits] >= '0' &&
           inside[index + digits] <= '7') {
      code = code * 8 + static_cast<unsigned>(inside[index + digits] - '0');
      ++digits;
    }
    if (digits > 0) {
      text += static_cast<char>(code & 0xFF);
      index += digits - 1;
    } else {
      text += inside[index];
    }
  }
  return text;
}

bool takeNumber(std::string_view& text, double& number) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

std::optional<Box> boxOf(std::string_view text) {
  std::array<double, 4> corner{};
  for (double& number : corner) {
    if (!takeNumber(text, number)) return std::nullopt;
  }
  if (!(corner[0] < corner[2] && corner[1] < corner[3])) return std::nullopt;
  return Box{corner[0], corner[1], corner[2], corner[3]};
}

// The line ends of a text, from its start to its end. A search for one character is much faster than one for
// several, and a text may hold only one kind of them; so each kind is looked for by itself, and once.
class LineEnds {
 public:
  explicit LineEnds(std::string_view text)
      : text_(text), lineFeed_(text.find('\n')), carriageReturn_(text.find('\r')) {}

  // The first at or behind `start`, or npos. REQUIRES: `start` never goes back
  std::size_t from(std::size_t start) {
    if (lineFeed_ < start) lineFeed_ = text_.find('\n', start);
    if (carriageReturn_ < start) carriageReturn_ = text_.find('\r', start);
    return std::min(lineFeed_, carriageReturn_);
  }

 private:
  std::string_view text_;
  std::size_t lineFeed_;
  std::size_t carriageReturn_;
};

}  // namespace

void CommentScanner::scan(std::string_view piece) {
  LineEnds lineEnds(piece);
  for (std::size_t start = 0; start < piece.size();) {
    const std::size_t end = lineEnds.from(start);
    const bool isCut = end == std::string_view::npos;
    const std::string_view part = piece.substr(start, isCut ? end : end - start);
    // Most lines are no comments: they are told by their first characters, and not copied.
    const bool isComment =
        line_.empty() ? (part.empty() || part.front() == '%' || isFirstLine_) && !isLineLong_ : true;
    if (isComment && line_.size() + part.size() <= kLongestLine) {
      line_ += part;
    } else {
      line_.clear();
      isLineLong_ = true;
    }
    if (isCut) return;
    if (!line_.empty()) takeLine(line_);
    if (isLineLong_ && place_ == Place::kHeader) place_ = Place::kBody;
    line_.clear();
    isLineLong_ = false;
    start = end + 1;
  }
}

void CommentScanner::takeLine(std::string_view line) {
  if (isFirstLine_) {
    isFirstLine_ = false;
    isEncapsulated_ = line.starts_with("%!PS-Adobe") && line.find("EPSF") != std::string_view::npos;
    return;
  }
  if (!line.starts_with("%%")) {
    // The header ends with the first line that is no comment.
    if (!line.starts_with('%') && place_ == Place::kHeader) place_ = Place::kBody;
    return;
  }
  line.remove_prefix(2);
  const std::size_t colon = line.find(':');
  const std::string_view keyword = trimmed(line.substr(0, colon));
  takeComment(keyword,
              colon == std::string_view::npos ? std::string_view() : trimmed(line.substr(colon + 1)));
}

void CommentScanner::takeComment(std::string_view keyword, std::string_view value) {
  if (keyword == "BeginDocument") ++nesting_;
  if (keyword == "EndDocument" && nesting_ > 0) --nesting_;
  if (nesting_ > 0) return;
  if (keyword == "EndComments") {
    place_ = Place::kBody;
  } else if (keyword == "Trailer" || keyword == "EOF") {
    place_ = Place::kTrailer;
  }
  if (place_ == Place::kBody || value.starts_with("(atend)")) return;
  // In the header the first of equal comments counts, in the trailer the last.
  const bool isLater = place_ == Place::kTrailer;
  Values& values = isLater ? trailer_ : header_;
  if (keyword == "BoundingBox" && (isLater || !values.boundingBox)) {
    values.boundingBox = boxOf(value);
  } else if ((keyword == "HiResBoundingBox" || keyword == "ExactBoundingBox") &&
             (isLater || !values.exactBox)) {
    values.exactBox = boxOf(value);
  } else if (keyword == "Title" && (isLater || values.title.empty())) {
    values.title = textValue(value);
  } else if (keyword == "Creator" && (isLater || values.creator.empty())) {
    values.creator = textValue(value);
  } else if (keyword == "CreationDate" && (isLater || values.creationDate.empty())) {
    values.creationDate = textValue(value);
  } else if (keyword == "Pages" && (isLater || values.promisedPages == 0)) {
    double pages = 0;
    if (takeNumber(value, pages) && pages > 0 && pages < 1e9)
      values.promisedPages = static_cast<std::uint64_t>(pages);
  }
}

std::optional<Box> CommentScanner::boundingBox() const {
  for (const std::optional<Box>& box :
       {header_.exactBox, trailer_.exactBox, header_.boundingBox, trailer_.boundingBox}) {
    if (box) return box;
  }
  return std::nullopt;
}

}  // namespace quillpress::level3
