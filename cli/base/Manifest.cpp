#include "cli/base/Manifest.h"

#include <filesystem>
#include <fstream>
#include <iostream>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/system/Paths.h"

namespace quillpress::cli {

namespace {

ManifestLine parseLine(const std::string& line, std::size_t number) {
  const std::size_t tab = line.find('\t');
  ManifestLine entry{line.substr(0, tab), tab == std::string::npos ? "" : line.substr(tab + 1)};
  const bool isStrange = entry.job.empty() || (tab != std::string::npos && entry.output.empty()) ||
                         entry.output.find('\t') != std::string::npos;
  if (isStrange) {
    throw UsageError("line " + std::to_string(number) +
                     " of the manifest: neither a job nor a job, a tabulator and its output");
  }
  if (entry.job == "-" || entry.output == "-") {
    throw UsageError("line " + std::to_string(number) + " of the manifest: jobs and outputs are files");
  }
  return entry;
}

std::vector<ManifestLine> readLines(std::istream& stream) {
  std::vector<ManifestLine> lines;
  std::string line;
  for (std::size_t number = 1; std::getline(stream, line); ++number) {
    // Lists may come from Windows.
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty()) lines.push_back(parseLine(line, number));
  }
  if (stream.bad()) throw InputError("cannot be read: " + systemReason());
  return lines;
}

}  // namespace

std::vector<ManifestLine> readManifest(const std::string& path) {
  if (path == "-") return readLines(std::cin);
  std::error_code error;
  if (std::filesystem::is_directory(pathOf(path), error)) throw InputError("is a directory, not a manifest");
  std::ifstream file(pathOf(path), std::ios::binary);
  if (!file) throw InputError("cannot be opened: " + systemReason());
  return readLines(file);
}

}  // namespace quillpress::cli
