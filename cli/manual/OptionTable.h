#pragma once

#include <string>
#include <vector>

namespace quillpress::cli {

// An option as manual page and completions show it.
struct OptionRow {
  std::string shortName;  // "-o", or empty
  std::string longName;   // "--output"
  std::string values;     // "FILE"; empty for options that take nothing
  std::string help;       // on one line

  // What comes before the first of ;:( in the help, besides the mark of the driver's dialect.
  [[nodiscard]] std::string summary() const;
  // What can stand behind the option, when that can be counted.
  [[nodiscard]] std::vector<std::string> choices() const;
  [[nodiscard]] bool takesFile() const { return values == "FILE"; }
  [[nodiscard]] bool takesFolder() const { return values == "DIR"; }
};

// Every option, in the order of the help: the rows of Options.def, and those for help and version.
const std::vector<OptionRow>& optionTable();

}  // namespace quillpress::cli
