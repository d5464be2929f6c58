#include "postscript/lib/base/DebugOutput.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillpress {

namespace {

// Asked each time, so that a test or a host can change its mind.
bool isForStandardError() {
  const char* const wish = std::getenv("QUILLPRESS_MESSAGES");
  return wish != nullptr && std::string_view(wish) == "stderr";
}

// Nobody listens, usually; on Windows a debugger or a viewer of debug messages shows it.
void writeToDebugger([[maybe_unused]] const std::string& text) {
#ifdef _WIN32
  OutputDebugStringA(text.c_str());
#endif
}

}  // namespace

void writeDebugOutput(const std::string& text) {
  if (isForStandardError()) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    // Windows keeps it back where standard error is no terminal, and other lines overtake it.
    std::fflush(stderr);
  } else {
    writeToDebugger(text);
  }
}

}  // namespace quillpress
