#include "cli/job/InputKind.h"

#include <array>

namespace quillpress::cli {

namespace {

struct Signature {
  std::string_view start;
  std::string_view kind;
};

// What people most often hand over by mistake. Of two that fit the first counts.
constexpr std::array kSignatures{
    Signature{"%PDF-", "it is a PDF file"},
    Signature{") HP-PCL XL", "it is a PCL XL job"},
    Signature{"\x1B", "it is a PCL or other escape sequence job"},
    Signature{"PK\x03\x04", "it is a ZIP or XPS file"},
    Signature{"\x89PNG", "it is a PNG picture"},
    Signature{"\xFF\xD8\xFF", "it is a JPEG picture"},
    Signature{{"II*\0", 4}, "it is a TIFF picture"},
    Signature{{"MM\0*", 4}, "it is a TIFF picture"},
    Signature{"\x1F\x8B", "it is compressed with gzip"},
    Signature{"\x7F"
              "ELF",
              "it is a program"},
};

}  // namespace

std::string describeInput(std::string_view start) {
  for (const Signature& signature : kSignatures) {
    if (start.starts_with(signature.start)) return std::string(signature.kind);
  }
  return "it does not begin with %!";
}

}  // namespace quillpress::cli
