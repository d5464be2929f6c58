#include "cli/InputKind.h"

#include <array>

namespace quillpress::cli {

namespace {

using std::string_view_literals::operator""sv;

struct Signature {
  std::string_view start;
  std::string_view kind;
};

constexpr std::array kSignatures{
    Signature{"%PDF-"sv, "it is a PDF file"sv},
    Signature{") HP-PCL XL"sv, "it is a PCL XL job"sv},
    Signature{"\x1B"sv, "it is a PCL or other escape sequence job"sv},
    Signature{"PK\x03\x04"sv, "it is a ZIP or XPS file"sv},
    Signature{"\x89PNG"sv, "it is a PNG picture"sv},
    Signature{"\xFF\xD8\xFF"sv, "it is a JPEG picture"sv},
    Signature{"II*\0"sv, "it is a TIFF picture"sv},
    Signature{"MM\0*"sv, "it is a TIFF picture"sv},
    Signature{"\x1F\x8B"sv, "it is compressed with gzip"sv},
    Signature{"\x7F"
              "ELF"sv,
              "it is a program"sv},
};

}  // namespace

std::string describeInput(std::string_view start) {
  for (const Signature& signature : kSignatures) {
    if (start.starts_with(signature.start)) return std::string(signature.kind);
  }
  return "it does not begin with %!";
}

}  // namespace quillpress::cli
