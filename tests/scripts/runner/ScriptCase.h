#pragma once

#include <optional>
#include <string>
#include <vector>

// A piece of PostScript and what it must do. Expectations that are not given are not looked at, except
// that a script without an expected error must not fail.
struct ScriptCase {
  int line = 0;  // of its expectation
  std::string script;
  std::optional<std::string> operands;  // the operand stack, bottom first, as == prints each object
  std::optional<std::string> error;     // the message, without place and final line feed
  std::optional<std::string> content;   // the page content of all calls
  std::optional<std::string> prints;    // the message output
};

// Reads the cases of a script file. Throws std::runtime_error, with the line, for what it cannot read.
std::vector<ScriptCase> readScriptCases(const std::string& path);
