#include "cli/job/JobComments.h"

#include "cli/base/Media.h"
#include "cli/base/TextScan.h"
#include "cli/job/DscText.h"

namespace quillpress::cli {

namespace {

// The header may put a value off to the trailer, which nobody knows before the job is over.
constexpr std::string_view kLater = "(atend)";

// Drops the name of a medium: one word, or a text in parentheses that may hold blanks.
void dropMediaName(std::string_view& value) {
  if (!value.starts_with('(')) {
    takeWord(value);
    return;
  }
  // Names of media hold no parentheses; a job that has some only loses its size.
  const std::size_t end = value.find(')');
  value.remove_prefix(end == std::string_view::npos ? value.size() : end + 1);
}

// Reads "NUMBER ...", the form of %%Pages; 0 when it is no number of pages.
std::uint64_t parsePages(std::string_view value) {
  const double number = takeNumber(value).value_or(0);
  constexpr double kMost = 1e9;
  return number >= 1 && number <= kMost ? static_cast<std::uint64_t>(number) : 0;
}

// Reads "NAME WIDTH HEIGHT ...", the form of %%DocumentMedia.
std::optional<Box> parseMedium(std::string_view value) {
  dropMediaName(value);
  const auto width = takeNumber(value);
  const auto height = takeNumber(value);
  if (!width || !height) return std::nullopt;
  const Box box{0, 0, *width, *height};
  if (!box.isPageSize()) return std::nullopt;
  return box;
}

}  // namespace

void JobComments::take(std::string_view keyword, std::string_view value) {
  if (keyword == "Page") {
    place_ = Place::kPage;
    // The box of the page before is not this one's.
    pageBox_.reset();
    ++pages_;
  } else if (keyword == "Trailer") {
    place_ = Place::kTrailer;
  } else if (keyword == "EndComments" && place_ == Place::kHeader) {
    place_ = Place::kSetUp;
  } else if (keyword == "PageBoundingBox") {
    takePageBoundingBox(value);
  } else if (place_ != Place::kPage && value != kLater) {
    takeOfDocument(keyword, value);
  }
  // A job that says so is complete, however many pages it has printed of those promised.
  if (keyword == "Trailer" || keyword == "EOF") isOver_ = true;
  if (keyword != "+") mediaContinues_ = keyword == "DocumentMedia";
}

void JobComments::takePageBoundingBox(std::string_view value) {
  const auto box = parseBox(value);
  if (!box) return;
  if (place_ == Place::kPage) pageBox_ = box;
  // Before the first page it is a default for all of them, by the structuring conventions.
  if (place_ == Place::kHeader || place_ == Place::kSetUp) pageDefault_ = box;
}

// The first sensible value counts, so that the header goes before the trailer.
void JobComments::takeOfDocument(std::string_view keyword, std::string_view value) {
  // Resources in the prologue carry boxes and titles of their own.
  if (place_ == Place::kSetUp) return;
  // The first medium of the list is the one on which the job begins.
  const bool isMedia = keyword == "DocumentMedia" || (keyword == "+" && mediaContinues_);
  if (isMedia && !media_) media_ = parseMedium(value);
  if (keyword == "Pages" && place_ == Place::kHeader) promisedPages_ = parsePages(value);
  if (keyword == "BoundingBox" && !documentBox_) documentBox_ = parseBox(value);
  if (keyword == "Title" && title_.empty()) title_ = dscText(value);
  if (keyword == "Creator" && creator_.empty()) creator_ = dscText(value);
}

Box JobComments::defaultBox() const {
  // From the most exact to the vaguest: a bounding box may be that of the marks, not of the page.
  if (pageDefault_) return *pageDefault_;
  if (media_) return *media_;
  return documentBox_.value_or(kA4);
}

}  // namespace quillpress::cli
