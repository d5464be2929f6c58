#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/base/ArchivePart.h"
#include "cli/base/Box.h"
#include "cli/base/ExitCode.h"
#include "cli/base/PageSelection.h"
#include "cli/base/Permissions.h"
#include "cli/base/Shard.h"

namespace quillpress::cli {

// Which language a job is taken to be in.
enum class Dialect {
  kFull,    // PostScript, LanguageLevel 3
  kDriver,  // what the six functions of the library understand
};

// What the user asked for. Options.def has the options.
struct Options {
  std::vector<std::string> jobs;  // paths, or "-" for standard input
  // The one of them that is converted now. `output` is where its PDF goes then.
  std::string job;
  // Others run beside this one, and somebody else tells how far all of them are.
  bool isPartOfBatch = false;
  // "man", "bash", "zsh" or "fish": print that instead of converting anything.
  std::string generated;
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
