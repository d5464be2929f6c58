#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress::cli {

// The name of an output that stands for one file a page: "page-%03d.pdf".
class PagePattern {
 public:
  // Nothing when `name` has no place for a number, or more than one.
  static std::optional<PagePattern> parse(std::string_view name);

  // The file of a page; pages count from 1.
  [[nodiscard]] std::string nameOf(std::uint64_t page) const;

 private:
  std::string before_;
  std::string behind_;
  std::size_t width_ = 0;
  char filler_ = ' ';
};

}  // namespace quillpress::cli
