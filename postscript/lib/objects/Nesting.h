#pragma once

#include <cstddef>

namespace quillpress {

// How deep arrays and dictionaries may be nested when they are printed or compared. Far more than a job
// ever needs, and little enough for the small stacks of a print spooler's threads.
inline constexpr std::size_t kMaxNesting = 500;

}  // namespace quillpress
