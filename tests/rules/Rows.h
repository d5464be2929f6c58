#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace quillpress::rules {

// A line INPUT => OUTPUT of a file in this folder. The native functions and the delivered library are held to
// the same rows.
struct Row {
  std::wstring input;
  std::wstring output;
  std::map<std::string, std::wstring> settings;  // the lines "@name value" so far
  std::string line;                              // as it stands in the file
};

// For messages of a test.
std::ostream& operator<<(std::ostream& out, const Row& row);

// Files are UTF-8. Blanks around input and output do not count; <U+20> is the character of that code, and
// <empty> alone is the empty text. Empty lines and lines that begin with "# " are left out. The test fails
// when there are no rows.
std::vector<Row> rowsOf(const std::string& file);

// The text with what stands for each {name} of `values` in it.
std::wstring filledIn(std::wstring text, const std::map<std::wstring, std::wstring>& values);

}  // namespace quillpress::rules
