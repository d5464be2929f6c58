#pragma once

#include <set>
#include <string_view>

namespace quillpress::cli {

// Numbers of the images and patterns that content text names.
using ObjectUses = std::set<unsigned>;

// Those that `content` names, text of whole operators. Throws PageError when it holds numbers that no PDF
// reader takes.
ObjectUses checkedObjectUses(std::string_view content);

}  // namespace quillpress::cli
