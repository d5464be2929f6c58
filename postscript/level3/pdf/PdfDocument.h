#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/level3/pdf/Outline.h"
#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

// Text as PDF keeps it outside of pages: as it is when it is ASCII or begins with a byte order mark, else
// from UTF-8 to UTF-16, else taken for PDFDocEncoding.
std::string pdfText(std::string_view text);

// What a page is made of, besides its number.
struct PageParts {
  Box mediaBox;
  std::optional<Box> cropBox;
  std::vector<ObjectNumber> contents;
  std::string resources;
  std::vector<ObjectNumber> annotations;
  // Further entries of its dictionary.
  std::string entries;
};

// A document written page by page: tree of pages, bookmarks, named places, information.
class PdfDocument {
 public:
  explicit PdfDocument(Output& output) : file_(output), root_(file_.reserve()), pages_(file_.reserve()) {}

  PdfFile& file() { return file_; }
  Outline& outline() { return outline_; }

  // The object of a page, counted from 0; also of one that is still to come.
  ObjectNumber pageObject(std::size_t page);
  std::size_t pageCount() const { return pageCount_; }
  void addPage(const PageParts& parts);

  // Entries of the information dictionary; a later one with the same key takes the place.
  void setInformation(std::string_view key, std::string_view value);
  void setInformationUnlessSet(std::string_view key, std::string_view value);
  void setMetadata(ObjectNumber stream) { metadata_ = stream; }
  // An entry of the catalogue.
  void setCatalogueEntry(std::string_view key, std::string_view value);
  // A place that links go to by name; `destination` is an array.
  void addDestination(std::string_view name, std::string_view destination);

  void finish();

 private:
  struct Entry {
    std::string key;
    std::string value;
  };
  // A page tree has two levels: the root's children are groups.
  struct Group {
    ObjectNumber number = 0;
    std::size_t count = 0;
    std::string kids;
  };

  void finishGroup();
  void writePages();
  ObjectNumber writeDestinations();
  ObjectNumber writeInformation();

  PdfFile file_;
  ObjectNumber root_;
  ObjectNumber pages_;
  std::vector<ObjectNumber> pageObjects_;
  std::size_t pageCount_ = 0;
  Group group_;
  std::string groups_;
  std::vector<Entry> information_;
  std::vector<Entry> catalogue_;
  // A name tree is sorted by its keys' bytes.
  std::map<std::string, std::string, std::less<>> destinations_;
  Outline outline_;
  ObjectNumber metadata_ = 0;
};

}  // namespace quillpress::level3
