#pragma once

#include <string>
#include <string_view>

#include "cli/content/ObjectUses.h"

namespace quillpress::cli {

// What a pattern cell draws.
struct PatternContent {
  std::string text;
  ObjectUses objects;
};

// Reads the captured content of a pattern. It comes out as it went in, save that a q or Q is added for each
// one that lacks its partner. Throws PageError when it holds numbers that no PDF reader takes.
PatternContent readPatternContent(std::string_view captured);

}  // namespace quillpress::cli
