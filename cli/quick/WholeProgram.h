#pragma once

namespace quillpress::cli {

// Loads the library that holds the whole program, and runs its `main`. Returns the status of the process;
// says why when the library cannot be loaded.
int runWholeProgram(int argc, const char* const* argv);

}  // namespace quillpress::cli
