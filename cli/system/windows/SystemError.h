#pragma once

namespace quillpress::cli {

// Puts the reason why the last call of the system failed into errno, by the nearest of its numbers.
void takeSystemError();

}  // namespace quillpress::cli
