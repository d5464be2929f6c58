#include "tests/umpd/harness/DebuggerOutput.h"

#include <utility>

#include "tests/umpd/harness/Text.h"

namespace quillpress::harness {

DebuggerOutput::DebuggerOutput(Library& library) {
  library.replaceIfImported("OutputDebugStringA", [this](LPCSTR text) { texts_.push_back(widen(text)); });
  library.replaceIfImported("OutputDebugStringW", [this](LPCWSTR text) { texts_.emplace_back(text); });
}

std::vector<std::wstring> DebuggerOutput::take() {
  return std::exchange(texts_, {});
}

std::wstring DebuggerOutput::takeJoined() {
  std::wstring joined;
  for (const std::wstring& text : take()) joined += text;
  return joined;
}

}  // namespace quillpress::harness
