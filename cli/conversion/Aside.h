#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace quillpress::cli {

// Asks a question whose answer may never come, as it lets the job run on: in a copy of this process, which
// changes nothing here and ends when `limit` has passed. Nothing when there is no answer by then, or none at
// all. The copy says nothing of what the job prints. REQUIRES: `question` leaves the threads of this process
// alone, as the copy has none of them.
std::optional<std::uint64_t> askAside(std::chrono::milliseconds limit,
                                      const std::function<std::optional<std::uint64_t>()>& question);

}  // namespace quillpress::cli
