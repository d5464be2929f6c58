#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <span>

struct PdfObject;

namespace quillpress::cli {

// On how many pages an object is drawn, by the object's number.
using PageCounts = std::map<unsigned, std::uint64_t>;

// Writes a line for each image and pattern of the converter's list, in order; `pages` may be null.
void listObjects(std::span<const PdfObject* const> list, const PageCounts* pages, std::FILE* file);

}  // namespace quillpress::cli
