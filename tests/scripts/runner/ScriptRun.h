#pragma once

#include <string>
#include <string_view>
#include <vector>

// What a script has done.
struct Outcome {
  std::string operands;
  std::string error;
  std::string content;
  std::string prints;
};

// Feeds the chunks to a new converter, until one fails, and then looks at its operand stack. The numbers of
// objects in the content are counted from this run's first object.
Outcome runScript(const std::vector<std::string_view>& chunks, bool showOperands);
