#include "cli/system/StandardStreams.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <string>

#include "cli/system/windows/WideText.h"
#include "cli/system/windows/Windows.h"

namespace quillpress::cli {

namespace {

constexpr int kStandardError = 2;

HANDLE handleOf(StandardStream stream) {
  constexpr std::array kNumbers{STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
  return GetStdHandle(kNumbers[static_cast<std::size_t>(stream)]);
}

}  // namespace

// A stream that is closed keeps its number here, so no other file can get it.
bool prepareStreams() {
  for (int number = 0; number <= kStandardError; ++number) {
    if (_get_osfhandle(number) >= 0) _setmode(number, _O_BINARY);
  }
  // A drive without a disk is an error like any other, and so is a crash: a box would wait for somebody.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  return true;
}

bool isTerminal(StandardStream stream) {
  DWORD mode = 0;
  return GetConsoleMode(handleOf(stream), &mode) != 0;
}

void writeToStandardError(std::string_view text) {
  // A console would take bytes for characters of its own code page.
  if (isTerminal(StandardStream::kError)) {
    const std::wstring wide = wideText(text);
    DWORD written = 0;
    WriteConsoleW(handleOf(StandardStream::kError), wide.data(), static_cast<DWORD>(wide.size()), &written,
                  nullptr);
    return;
  }
  static_cast<void>(_write(kStandardError, text.data(), static_cast<unsigned>(text.size())));
}

}  // namespace quillpress::cli
