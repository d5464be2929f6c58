#ifndef _WIN32

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "tests/scripts/runner/Library.h"

namespace {

// Standard error is turned into a file from which the messages are read back. Google Test reports on
// standard output, so nothing else gets in.
std::FILE* captureStandardError() {
  std::FILE* file = std::tmpfile();
  if (file == nullptr || dup2(fileno(file), STDERR_FILENO) < 0) {
    std::perror("script_tests: cannot capture standard error");
    std::exit(1);
  }
  setenv("QUILLPRESS_MESSAGES", "stderr", 1);
  return file;
}

std::FILE* captured() {
  static std::FILE* file = captureStandardError();
  return file;
}

}  // namespace

const Library& library() {
  static const Library functions{PSOpen, PSConvertToPdf, PSGetPdfObjects, PSGetErrorStr, PSClose};
  captured();
  return functions;
}

std::string takeMessages() {
  std::fflush(stderr);
  std::FILE* file = captured();
  std::rewind(file);
  std::string text;
  std::array<char, 4096> block{};
  for (std::size_t count = 1; count > 0;) {
    count = std::fread(block.data(), 1, block.size(), file);
    text.append(block.data(), count);
  }
  if (!text.empty() && ftruncate(fileno(file), 0) != 0) std::abort();
  std::rewind(file);
  return text;
}

#endif
