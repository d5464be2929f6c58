#include "postscript/lib/base/Ex.h"

#include <utility>

namespace quillpress {

namespace {

// Compilers give the path as the build names it; the field knows the bare name.
std::string_view bareFileName(std::string_view path) {
  const auto separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string format(std::string_view file, int line, const std::string& message) {
  std::string text;
  text.append("[")
      .append(bareFileName(file))
      .append(":")
      .append(std::to_string(line))
      .append("] ")
      .append(message);
  // Hosts print the texts one below the other, and some messages bring their own line feed.
  if (text.back() != '\n') text.push_back('\n');
  return text;
}

}  // namespace

Ex::Ex(std::string_view file, int line, std::string message)
    : file_(file), line_(line), message_(std::move(message)), formatted_(format(file, line, message_)) {}

// Not inline, so that the many places that throw stay small.
void throwEx(std::string_view file, int line, std::string message) {
  throw Ex(file, line, std::move(message));
}

}  // namespace quillpress
