#pragma once

#include <string>

namespace quillpress::cli {

// What makes shells complete the options of the command line, and what stands behind them.
std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

}  // namespace quillpress::cli
