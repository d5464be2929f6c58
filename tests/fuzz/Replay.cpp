// Runs a target over files, with any compiler: the corpus, or what a fuzzer has found.
//
//   fuzz_replay TARGET FILE-OR-FOLDER...

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/support/Target.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool replay(const quillpress::fuzz::Target& target, const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) {
    std::fprintf(stderr, "fuzz_replay: %s cannot be read\n", path.c_str());
    return false;
  }
  // Before the run, so that the last line of a run that ends badly names its input.
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  target.run({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const auto* target = argc > 2 ? quillpress::fuzz::findTarget(argv[1]) : nullptr;
  if (target == nullptr) {
    std::fprintf(stderr, "usage: fuzz_replay TARGET FILE-OR-FOLDER...\n");
    return 2;
  }
  std::size_t count = 0;
  for (int i = 2; i < argc; ++i) {
    for (const fs::path& path : filesOf(argv[i])) {
      if (!replay(*target, path)) return 1;
      ++count;
    }
  }
  std::printf("%zu inputs\n", count);
  return count > 0 ? 0 : 1;
}
