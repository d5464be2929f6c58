#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/base/Box.h"
#include "cli/base/ExitCode.h"

namespace quillpress::cli {

// Which language a job is taken to be in.
enum class Dialect {
  kFull,    // PostScript, LanguageLevel 3
  kDriver,  // what the six functions of the library understand
};

// What the user asked for. Options.def has the options.
struct Options {
  std::string job;  // path, or "-" for standard input
#define FLAG(field, name, help) bool field = false;
#define OPTION(type, field, initial, name, values, read, help) type field = initial;
#include "cli/base/Options.def"
#undef FLAG
#undef OPTION
};

// Reads the command line. When there is nothing to convert (--help, --version, a mistake) it has said so
// and `exit` is what the process returns.
std::optional<Options> parseOptions(int argc, const char* const* argv, ExitCode& exit);

}  // namespace quillpress::cli
