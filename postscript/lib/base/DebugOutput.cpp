#include "postscript/lib/base/DebugOutput.h"

#ifdef _WIN32

#include <windows.h>

namespace quillpress {

// Nobody listens, usually; a debugger or a viewer of debug messages shows it.
void writeDebugOutput(const std::string& text) {
  OutputDebugStringA(text.c_str());
}

}  // namespace quillpress

#else

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace quillpress {

void writeDebugOutput(const std::string& text) {
  // Asked each time, so that a test or a host can change its mind.
  const char* wish = std::getenv("QUILLPRESS_MESSAGES");
  if (wish == nullptr || std::string_view(wish) != "stderr") return;
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace quillpress

#endif
