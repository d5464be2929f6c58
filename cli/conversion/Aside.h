#pragma once

#include <chrono>
#include <functional>

namespace quillpress::cli {

// Asks a question whose answer may never come, as it lets the job run on: in a copy of this process, which
// changes nothing here and ends when `limit` has passed. False when there is no answer by then, or none at
// all. The copy says nothing of what the job prints. REQUIRES: `question` leaves the threads of this process
// alone, as the copy has none of them.
bool askAside(std::chrono::milliseconds limit, const std::function<bool()>& question);

}  // namespace quillpress::cli
