#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quillpress::cli {

// Finds the byte at which the first error of a job comes up. The converter only tells that a chunk failed,
// so the job runs a second time, aside, and that chunk byte by byte. `begin` and `end` are the offsets of
// the chunk. The result is the offset of the byte that ended the failing token or was its last; nothing when
// the job cannot be read twice, does not fail again in the same place, or takes too long to get there.
std::optional<std::uint64_t> findError(const std::string& path, std::uint64_t begin, std::uint64_t end);

}  // namespace quillpress::cli
