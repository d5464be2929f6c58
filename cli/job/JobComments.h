#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "cli/base/Box.h"

namespace quillpress::cli {

// What a job's structuring comments say about it and its pages.
class JobComments {
 public:
  // Takes the next comment of the job, in order. %%Page begins a page here too.
  void take(std::string_view keyword, std::string_view value);

  // The box of the present page, when its own comments give a sensible one.
  [[nodiscard]] const std::optional<Box>& pageBox() const { return pageBox_; }

  // The size of pages that have none of their own. Complete only at the end of the job, as the comments of
  // its header may point to the trailer.
  [[nodiscard]] Box defaultBox() const;

  // Whether the header promises more pages than have come, and nothing has said that the job is over.
  [[nodiscard]] bool lacksPages() const { return !isOver_ && pages_ < promisedPages_; }

  // In UTF-8; empty when there is none.
  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] const std::string& creator() const { return creator_; }

 private:
  enum class Place { kHeader, kSetUp, kPage, kTrailer };

  void takePageBoundingBox(std::string_view value);
  void takeOfDocument(std::string_view keyword, std::string_view value);

  Place place_ = Place::kHeader;
  std::optional<Box> pageBox_;
  std::optional<Box> pageDefault_;
  std::optional<Box> media_;
  std::optional<Box> documentBox_;
  bool mediaContinues_ = false;
  std::uint64_t pages_ = 0;
  std::uint64_t promisedPages_ = 0;
  bool isOver_ = false;  // the trailer, or the end of the file, has been announced
  std::string title_;
  std::string creator_;
};

}  // namespace quillpress::cli
