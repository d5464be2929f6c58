#pragma once

#include <string_view>
#include <vector>

namespace quillpress::cli {

// What the help and the manual page say beside the options, each written once.

struct ExitCodeHelp {
  int code;
  std::string_view meaning;
};
const std::vector<ExitCodeHelp>& exitCodeHelp();

// How the codes of several jobs make one.
constexpr std::string_view kSeveralCodes =
    "With --dialect driver, 1 stands for both kinds of error.\nOf several jobs the gravest code counts: 4 "
    "before 2, 3, "
    "1, 6 and 5.";

struct ExampleHelp {
  std::string_view command;
  std::string_view meaning;
};
const std::vector<ExampleHelp>& exampleHelp();

}  // namespace quillpress::cli
