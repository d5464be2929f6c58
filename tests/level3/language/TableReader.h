#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillpress::level3 {

// One row of a table of small programs:
//
//   adds two integers:: 1 2 add == => 3
//
// or, when the program has several lines, with the lines indented:
//
//   follows a carriage return in a string::
//     (a
//     b) ==
//   => (a\nb)
//
// What is expected is the output with every white space as one blank, none at its ends. Lines that begin with
// "#" say something to the reader.
struct TableRow {
  std::string name;
  std::string program;
  std::string expected;
  int line = 0;
};

// Throws std::runtime_error, with file and line, for a table that is not written like this.
std::vector<TableRow> readTable(const std::filesystem::path& file);

// The text with every white space as one blank, none at its ends.
std::string squeezed(const std::string& text);

}  // namespace quillpress::level3
