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
  std::optional<Box> boundingBox() const;
  const std::string& title() const { return header_.title.empty() ? trailer_.title : header_.title; }
  const std::string& creator() const { return header_.creator.empty() ? trailer_.creator : header_.creator; }
  const std::string& creationDate() const {
    return header_.creationDate.empty() ? trailer_.creationDate : header_.creationDate;
  }
  std::uint64_t promisedPages() const {
    return header_.promisedPages != 0 ? header_.promisedPages : trailer_.promisedPages;
  }

 private:
  enum class Place { kHeader, kBody, kTrailer };

  struct Values {
    std::optional<Box> boundingBox;
    std::optional<Box> exactBox;
    std::string title;
    std::string creator;
    std::string creationDate;
    std::uint64_t promisedPages = 0;
  };

  void takeLine(std::string_view line);
  void takeComment(std::string_view keyword, std::string_view value);

  std::string line_;  // the beginning of a line that goes on in the next piece
  Place place_ = Place::kHeader;
  int nesting_ = 0;  // documents within the document
  bool isLineLong_ = false;
  bool isFirstLine_ = true;
  bool isEncapsulated_ = false;
  // The trailer's count where the header has none: a program that puts documents together leaves theirs.
  Values header_;
  Values trailer_;
};

}  // namespace quillpress::level3
