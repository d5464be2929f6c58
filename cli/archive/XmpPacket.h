#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// What the information dictionary and the metadata packet both say of a document, in UTF-8; dates are XMP's.
struct XmpFacts {
  std::optional<std::string> title;
  std::optional<std::string> author;
  std::optional<std::string> subject;
  std::optional<std::string> keywords;
  std::optional<std::string> creator;
  std::optional<std::string> producer;
  std::optional<std::string> creationDate;
  std::optional<std::string> modificationDate;
};

// `text` without what XML has no way to say: control characters, halves of surrogate pairs, and bytes that
// are not UTF-8.
std::string xmlSayable(std::string_view text);

// A metadata packet. REQUIRES: the texts are xmlSayable.
std::string xmpPacket(const XmpFacts& facts, ArchivePart part);

// A date of the information dictionary, in its full form, and as XMP writes it. Time of day without a zone is
// taken to be universal, as programs that compare the two do not agree otherwise.
struct DocumentDate {
  std::string pdf;
  std::string xmp;
};

// Nothing when `text` is no date, as in "D:20240131", "D:20240131235959+01'00'".
std::optional<DocumentDate> documentDateOf(std::string_view text);

}  // namespace quillpress::cli
