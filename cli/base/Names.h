#pragma once

#include <string>

namespace quillpress::cli {

// How messages name the job at `path`.
inline std::string jobName(const std::string& path) {
  return path == "-" ? "standard input" : path;
}

// How messages name the output at `path`.
inline std::string outputName(const std::string& path) {
  return path == "-" ? "standard output" : path;
}

}  // namespace quillpress::cli
