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

// What the user asked for.
struct Options {
  std::string job;     // path, or "-" for standard input
  std::string output;  // path, or "-" for standard output
  std::optional<Box> media;
  std::size_t chunkSize = 64UL * 1024;
  bool keepGoing = false;
  Dialect dialect = Dialect::kFull;
  bool cropsEncapsulated = true;             // EPS jobs get their bounding box as page
  bool run = false;                          // interpret only
  std::optional<double> timeout;             // seconds
  std::optional<std::size_t> maxMemory;      // bytes
  std::vector<std::string> readableFolders;  // whose files a job may read
  bool content = false;
  bool objects = false;
  bool messages = false;
};

// Reads the command line. When there is nothing to convert (--help, --version, a mistake) it has said so
// and `exit` is what the process returns.
std::optional<Options> parseOptions(int argc, const char* const* argv, ExitCode& exit);

}  // namespace quillpress::cli
