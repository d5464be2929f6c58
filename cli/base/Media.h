#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/base/Box.h"

namespace quillpress::cli {

// The page of a job that says nothing about its size.
constexpr Box kA4{0, 0, 595, 842};

// The page that `text` asks for: a name (A4, Letter ..., in any case) or WIDTHxHEIGHT with an optional
// unit at the end (pt, mm, cm, in; points when there is none), as in 210x297mm. Nothing when it is neither.
std::optional<Box> parseMedia(std::string_view text);

// The names that parseMedia knows, on lines short enough for the help text.
std::string mediaNames();

}  // namespace quillpress::cli
