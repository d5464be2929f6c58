#include "cli/cups/FilterJob.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

#include "cli/base/Media.h"
#include "cli/base/Messages.h"
#include "cli/cups/ServerOptions.h"

namespace quillpress::cli {

namespace {

// Their places, behind the name of the program.
constexpr std::size_t kId = 1;
constexpr std::size_t kUser = 2;
constexpr std::size_t kTitle = 3;
constexpr std::size_t kCopies = 4;
constexpr std::size_t kOptions = 5;
constexpr std::size_t kFile = 6;

unsigned copiesOf(std::string_view text) {
  unsigned copies = 0;
  std::from_chars(text.data(), text.data() + text.size(), copies);
  return std::max(copies, 1U);
}

// A size by one of the names that are in use: "A4", "iso_a4_210x297mm", "Custom.210x297mm".
std::optional<Box> mediaNamed(std::string_view name) {
  constexpr std::string_view kCustom = "Custom.";
  if (name.starts_with(kCustom)) name.remove_prefix(kCustom.size());
  if (const std::optional<Box> media = parseMedia(name)) return media;
  return parseMedia(name.substr(name.rfind('_') + 1));
}

// The first size of a list that also names trays and kinds of paper.
std::optional<Box> mediaOf(const ServerOptions& given) {
  std::string names = given.value("PageSize");
  if (names.empty()) names = given.value("media");
  std::string_view rest = names;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    if (const std::optional<Box> media = mediaNamed(rest.substr(0, end))) return media;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return std::nullopt;
}

// Degrees clockwise, for the numbers that printers know orientations by (RFC 8011, 5.2.10).
int rotationOf(std::string_view orientation) {
  constexpr int kQuarter = 90;
  if (orientation == "4") return 3 * kQuarter;  // landscape: counter-clockwise
  if (orientation == "5") return kQuarter;
  if (orientation == "6") return 2 * kQuarter;
  return 0;
}

void arrangePages(const ServerOptions& given, Options& options) {
  options.rotation = rotationOf(given.value("orientation-requested"));
  const std::string ranges = given.value("page-ranges");
  if (ranges.empty()) return;
  if (const auto pages = PageSelection::parse(ranges)) {
    options.pages = *pages;
  } else {
    warn("page-ranges", "not a list of pages: " + ranges);
  }
}

}  // namespace

std::optional<FilterJob> readFilterJob(int argc, const char* const* argv, FilterPlace place) {
  const std::vector<std::string> arguments(argv, argv + argc);
  if (arguments.size() != kOptions + 1 && arguments.size() != kFile + 1) return std::nullopt;
  FilterJob job;
  job.id = arguments[kId];
  job.copies = copiesOf(arguments[kCopies]);
  job.options.output.assign(1, '-');
  job.options.job = arguments.size() > kFile ? arguments[kFile] : job.options.output;
  job.options.quiet = true;
  // The server's next filters turn pages as the printer wants them.
  job.options.keepsPagesUnturned = true;
  if (!arguments[kTitle].empty()) job.options.title = arguments[kTitle];
  if (!arguments[kUser].empty()) job.options.author = arguments[kUser];
  const ServerOptions given(arguments[kOptions]);
  job.options.media = mediaOf(given);
  if (place == FilterPlace::kLast) arrangePages(given, job.options);
  return job;
}

}  // namespace quillpress::cli
