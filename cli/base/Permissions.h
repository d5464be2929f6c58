#pragma once

#include <optional>
#include <string_view>

namespace quillpress::cli {

// What whoever opens an encrypted PDF with the user's password may do with it.
struct Permissions {
  enum class Printing { kNone, kCoarse, kFull };

  Printing printing = Printing::kFull;
  bool copying = true;
  bool modifying = true;
  bool annotating = true;
  bool fillingForms = true;
  bool assembling = true;

  friend bool operator==(const Permissions&, const Permissions&) = default;
};

// "print,copy": what is named is permitted and nothing else; or "all" or "none". Nothing when a word is none
// of those.
std::optional<Permissions> parsePermissions(std::string_view text);

// The words, for help texts.
constexpr const char* kPermissionWords =
    "all, none, print, print-coarse, copy, modify, annotate,\nforms, assemble";

}  // namespace quillpress::cli
