#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "umpd/settings/DriverSettings.h"

namespace quillpress::driver {
// Chooses where the output of a job goes, by the settings of its printer, and makes the folder.
class SetFilename {
 public:
  // The settings must outlive this object.
  explicit SetFilename(const DriverSettings& settings) : settings_(&settings) {}

  // A path of less than `bufferSize` characters at which no file exists. Nothing, with the last error, when
  // an existing file stands in the way of a path without an ending. Folders that cannot be made show later.
  [[nodiscard]] std::optional<std::wstring> chooseOutputFilename(const std::wstring& documentName,
                                                                 std::size_t bufferSize) const;

 private:
  const DriverSettings* settings_;
};

// The first line of a text file in the ANSI code page, less than `bufferSize` characters of it, without
// blanks and tabs at its end. Nothing when the file cannot be opened.
std::optional<std::wstring> readFirstLine(const std::wstring& path, std::size_t bufferSize);
}  // namespace quillpress::driver
