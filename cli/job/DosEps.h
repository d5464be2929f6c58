#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace quillpress::cli {

// Part of a file: offsets of its first byte and of the byte after its last.
struct FileSection {
  std::uint64_t begin = 0;
  std::uint64_t end = std::numeric_limits<std::uint64_t>::max();
};

// Where the PostScript of a file lies. An EPS file for DOS begins with a binary header (C5 D0 D3 C6) that
// says so, since a preview picture stands beside the PostScript; every other file is one section.
// `start` holds the first bytes of the file, 12 or more if it has them.
FileSection postscriptSection(std::string_view start);

}  // namespace quillpress::cli
