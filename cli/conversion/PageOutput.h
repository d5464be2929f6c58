#pragma once

#include <optional>
#include <string_view>

#include "cli/base/Box.h"

namespace quillpress::cli {

class Converter;

// Takes the content of pages, one page at a time. Only pages that are ended come to be written.
class PageOutput {
 public:
  PageOutput() = default;
  PageOutput(const PageOutput&) = delete;
  PageOutput& operator=(const PageOutput&) = delete;
  virtual ~PageOutput() = default;

  virtual void beginPage() = 0;

  // `text` is what the converter returned; borrowed for the call.
  virtual void append(std::string_view text) = 0;

  // The page is complete. `box` is its size when its own comments give one.
  virtual void endPage(const std::optional<Box>& box, Converter& converter) = 0;

  // The page is never going to be complete.
  virtual void dropPage() = 0;
};

}  // namespace quillpress::cli
