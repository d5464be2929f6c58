#pragma once

#include <cstddef>
#include <string_view>

namespace quillpress::cli {

// Something in content text that the writer of a page has to know about.
struct ContentMark {
  enum class Kind {
    kSave,         // q
    kRestore,      // Q
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
  explicit ContentScanner(std::string_view text) : text_(text) {}

  // Finds the next mark that begins before `limit`; when there is none, the next search begins at `limit`.
  bool next(std::size_t limit, ContentMark& mark);

 private:
  bool markAt(std::size_t at, ContentMark& mark) const;
  bool operatorAt(std::size_t at, std::string_view name, ContentMark::Kind kind, ContentMark& mark) const;
  bool objectAt(std::size_t at, ContentMark& mark) const;

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace quillpress::cli
