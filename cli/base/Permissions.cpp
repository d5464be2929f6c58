#include "cli/base/Permissions.h"

namespace quillpress::cli {

namespace {

constexpr Permissions kNothing{Permissions::Printing::kNone, false, false, false, false, false};

bool permit(Permissions& permissions, std::string_view word) {
  if (word == "all") {
    permissions = {};
  } else if (word == "print") {
    permissions.printing = Permissions::Printing::kFull;
  } else if (word == "print-coarse") {
    permissions.printing = Permissions::Printing::kCoarse;
  } else if (word == "copy") {
    permissions.copying = true;
  } else if (word == "modify") {
    permissions.modifying = true;
  } else if (word == "annotate") {
    permissions.annotating = true;
  } else if (word == "forms") {
    permissions.fillingForms = true;
  } else if (word == "assemble") {
    permissions.assembling = true;
  } else {
    return word == "none";
  }
  return true;
}

}  // namespace

std::optional<Permissions> parsePermissions(std::string_view text) {
  Permissions permissions = kNothing;
  while (true) {
    const std::size_t comma = text.find(',');
    if (!permit(permissions, text.substr(0, comma))) return std::nullopt;
    if (comma == std::string_view::npos) return permissions;
    text.remove_prefix(comma + 1);
  }
}

}  // namespace quillpress::cli
