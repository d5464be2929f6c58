#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::cli {

// The one of `words` that somebody has most likely meant who has typed `text`: it begins so, or few letters
// are left out, too many, wrong or exchanged. Nothing when none is near. Of equally near ones the first
// counts.
std::optional<std::string> nearestWord(std::string_view text, const std::vector<std::string>& words);

}  // namespace quillpress::cli
