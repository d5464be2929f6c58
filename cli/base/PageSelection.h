#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillpress::cli {

// Which pages of a job are wanted, in which order: "2-5,9". A range may run backwards, and one without an end
// runs to the last page. Nothing at all means every page.
class PageSelection {
 public:
  // Nothing when `text` is no list of pages.
  static std::optional<PageSelection> parse(std::string_view text);

  [[nodiscard]] bool isEverything() const { return ranges_.empty(); }

  // The wanted ones of `count` pages, from 0. Pages beyond the last one are left out.
  [[nodiscard]] std::vector<std::uint64_t> of(std::uint64_t count) const;

  // Whether a page is asked for that a job of `count` pages does not have.
  [[nodiscard]] bool reachesBeyond(std::uint64_t count) const;

 private:
  struct Range {
    std::uint64_t first;
    std::optional<std::uint64_t> last;  // nothing: up to the end
  };

  static std::optional<Range> parseRange(std::string_view text);

  std::vector<Range> ranges_;
};

}  // namespace quillpress::cli
