#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

// The bookmarks of a document, given in the order in which they are read, each with the number of its
// children.
class Outline {
 public:
  struct Item {
    // In PDF's form, from pdfText().
    std::string title;
    // Its children follow it. Below 0 they are shown only when they are asked for.
    int count = 0;
    // Further entries: where it leads, its colour, its style.
    std::string entries;
  };

  void add(Item item) { items_.push_back(std::move(item)); }
  bool isEmpty() const { return items_.empty(); }

  // Writes all and gives back the root.
  ObjectNumber write(PdfFile& file) const;

 private:
  struct Node;

  std::vector<Node> nodes() const;

  std::vector<Item> items_;
};

}  // namespace quillpress::level3
