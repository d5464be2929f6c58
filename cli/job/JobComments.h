#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/base/Box.h"

namespace quillpress::cli {

/** What a job's structuring comments say about it and its pages. */
class JobComments {
 public:
  /** Takes the next comment of the job, in order. %%Page begins a page here too. */
  void take(std::string_view keyword, std::string_view value);

  /** The box of the present page, when its own comments give a sensible one. */
  [[nodiscard]] const std::optional<Box>& pageBox() const { return pageBox_; }

  /**
   * The size of pages that have none of their own. Complete only at the end of the job, as the comments of
   * its header may point to the trailer.
   */
  [[nodiscard]] Box defaultBox() const;

  /** In UTF-8; empty when there is none. */
  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] const std::string& creator() const { return creator_; }

 private:
  enum class Place { Header, SetUp, Page, Trailer };

  void takePageBoundingBox(std::string_view value);
  void takeOfDocument(std::string_view keyword, std::string_view value);

  Place place_ = Place::Header;
  std::optional<Box> pageBox_;
  std::optional<Box> pageDefault_;
  std::optional<Box> media_;
  std::optional<Box> documentBox_;
  bool mediaContinues_ = false;
  std::string title_;
  std::string creator_;
};

}  // namespace quillpress::cli
