#pragma once

#include <string>
#include <vector>

namespace quillpress::cli {

// A line of a manifest: a job, and where its PDF goes; empty where the line does not say it.
struct ManifestLine {
  std::string job;
  std::string output;

  friend bool operator==(const ManifestLine&, const ManifestLine&) = default;
};

// Reads a list of jobs: on each line a job, or a job, a tabulator and its output. Empty lines are passed
// over. `path` may be "-" for standard input. Throws InputError when it cannot be read, and UsageError at a
// line that is neither.
std::vector<ManifestLine> readManifest(const std::string& path);

}  // namespace quillpress::cli
