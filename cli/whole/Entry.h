#pragma once

namespace quillpress::cli {

// What a quick start finds of the whole program, in a library.
using WholeProgramEntry = int (*)(int argc, const char* const* argv);
inline constexpr const char* kWholeProgramEntry = "quillpressRunWholeProgram";

}  // namespace quillpress::cli
