#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "postscript/level3/geometry/Box.h"

namespace quillpress::level3 {

// What the structuring comments of a job say about the document. It is given the job's bytes in pieces.
class CommentScanner {
 public:
  void scan(std::string_view piece);

  // The first line says that the job is an encapsulated picture.
  bool isEncapsulated() const { return isEncapsulated_; }
  bool hasHeaderEnded() const { return place_ != Place::kHeader; }

  // The exact box where there is one.
  const std::optional<Box>& boundingBox() const { return exactBox_ ? exactBox_ : boundingBox_; }
  const std::string& title() const { return title_; }
  const std::string& creator() const { return creator_; }
  const std::string& creationDate() const { return creationDate_; }
  std::uint64_t promisedPages() const { return promisedPages_; }

 private:
  enum class Place { kHeader, kBody, kTrailer };

  void takeLine(std::string_view line);
  void takeComment(std::string_view keyword, std::string_view value);

  std::string line_;  // the beginning of a line that goes on in the next piece
  Place place_ = Place::kHeader;
  int nesting_ = 0;  // documents within the document
  bool isLineLong_ = false;
  bool isFirstLine_ = true;
  bool isEncapsulated_ = false;
  std::optional<Box> boundingBox_;
  std::optional<Box> exactBox_;
  std::string title_;
  std::string creator_;
  std::string creationDate_;
  std::uint64_t promisedPages_ = 0;
};

}  // namespace quillpress::level3
