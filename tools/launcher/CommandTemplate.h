#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::launcher {

// A command to run for a finished file, in the form of the printer's setting "ExecCmdLine": the first "%s"
// stands for the file's path, the second for the name of the document.
//
// The names come from whoever prints, so they cannot change what the command is made of: it is taken apart
// first, then the names are put in, each within its argument, and all is quoted anew.
class CommandTemplate {
 public:
  // None, and why, when the text is no command that names can be given to safely.
  static std::optional<CommandTemplate> parse(std::wstring_view text, std::wstring& complaint);

  [[nodiscard]] std::wstring commandLine(std::wstring_view outputPath, std::wstring_view documentName) const;

 private:
  explicit CommandTemplate(std::vector<std::wstring> arguments) : arguments_(std::move(arguments)) {}

  std::vector<std::wstring> arguments_;
};

}  // namespace quillpress::launcher
