#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace quillpress {

// The one exception of the interpreter: what went wrong and the source line that said so. There is no
// PostScript error dictionary behind it; it unwinds to the C boundary, which turns it into a result.
class Ex : public std::exception {
 public:
  Ex(std::string_view file, int line, std::string message);

  [[nodiscard]] const std::string& file() const { return file_; }
  [[nodiscard]] int line() const { return line_; }
  [[nodiscard]] const std::string& message() const { return message_; }

  // "[File.cpp:57] message", ending in exactly the line feed that the message had, or one.
  [[nodiscard]] const std::string& formatted() const { return formatted_; }
  [[nodiscard]] const char* what() const noexcept override { return formatted_.c_str(); }

 private:
  std::string file_;
  int line_;
  std::string message_;
  std::string formatted_;
};

[[noreturn]] void throwEx(std::string_view file, int line, std::string message);

}  // namespace quillpress

// Throws an Ex that names the place of the throw. The message stands literally at the call, so that a
// search for a message from the field finds its line.
#define THROW_EX(message) ::quillpress::throwEx(__FILE__, __LINE__, message)
