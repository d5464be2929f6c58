#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/base/Box.h"
#include "cli/spool/Spool.h"

namespace quillpress::cli {

// A complete page.
struct DocumentPage {
  std::optional<Box> box;            // its size when its own comments give one
  std::vector<std::size_t> content;  // its content streams, as places in Document::pieces
  std::vector<unsigned> objects;     // numbers of the objects that it names, in ascending order
};

// Everything about the PDF file but the bytes of its streams, which lie in the spool.
struct Document {
  std::vector<DocumentPage> pages;
  std::vector<Spool::Piece> pieces;
  Box defaultBox;            // of pages without a size of their own
  std::optional<Box> media;  // of all pages, when the user says so
  std::string title;         // in UTF-8; empty when there is none
  std::string creator;
};

}  // namespace quillpress::cli
