#pragma once

#include <optional>
#include <string>

#include "tools/launcher/Log.h"
#include "tools/launcher/Options.h"
#include "umpd/win32/Windows.h"

namespace quillpress::launcher {

// Makes PDFs of finished files by quillpress.exe, which lies beside this program, and opens them. What
// becomes of a file is a line of the log.
class PdfConversion {
 public:
  // Conversions end when the event `stop` is signalled. REQUIRES: all outlive this object
  PdfConversion(const Options& options, Log& log, HANDLE stop);

  // Whether a finished file is to be converted: when that is asked for, and without a word when the program
  // that does it is there and no other has been named for finished files.
  [[nodiscard]] bool isWanted() const;

  // The path of the PDF; none when there is no PDF. Waits for its end.
  [[nodiscard]] std::optional<std::wstring> convert(const std::wstring& file);

  // Has the user's viewer show the PDF.
  void open(const std::wstring& pdf);

 private:
  [[nodiscard]] std::optional<std::wstring> putInPlace(const std::wstring& made, const std::wstring& file,
                                                       bool isPartial);

  const Options& options_;
  Log& log_;
  HANDLE stop_;
  std::wstring program_;
};

}  // namespace quillpress::launcher
