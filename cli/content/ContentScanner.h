#pragma once

#include <cstddef>
#include <string_view>

namespace quillpress::cli {

// Something in content text that the writer of a page has to know about.
struct ContentMark {
  enum class Kind {
    kSave,         // q
    kRestore,      // Q
    kConcat,       // cm
    kObject,       // the name of an image or pattern object
    kInlineImage,  // from BI to EI
  };

  Kind kind;
  std::size_t begin;
  std::size_t end;
  unsigned number;  // the object's, in Object: 3 for /PSI3
};

// Walks over content text as the converter writes it, from mark to mark. The converter returns whole
// operators, so a text begins and ends between tokens, and holds no strings, comments or dictionaries
// outside inline images.
class ContentScanner {
 public:
  explicit ContentScanner(std::string_view text, std::size_t begin = 0) : text_(text), at_(begin) {}

  // Finds the next mark that begins before `limit`; false, with the position there, when there is none.
  bool next(std::size_t limit, ContentMark& mark);

  [[nodiscard]] std::size_t position() const { return at_; }

 private:
  bool markAt(std::size_t at, ContentMark& mark) const;
  bool operatorAt(std::size_t at, std::string_view name, ContentMark::Kind kind, ContentMark& mark) const;
  bool objectAt(std::size_t at, ContentMark& mark) const;

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace quillpress::cli
