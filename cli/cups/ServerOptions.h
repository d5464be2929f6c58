#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quillpress::cli {

// The options of a job as CUPS hands them to its filters: NAME=VALUE and NAME, blanks between them; values
// may stand in quotes of either kind, and a backslash takes any character as it is. A name alone is "true",
// one with "no" before it "false" for the rest of the name; of several values the last one counts.
class ServerOptions {
 public:
  explicit ServerOptions(std::string_view text);

  // Empty when the option is not given.
  [[nodiscard]] std::string value(const std::string& name) const;

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace quillpress::cli
