#pragma once

#include <string>
#include <string_view>

#include "cli/content/Matrix.h"

namespace quillpress::cli {

// An operator of content text with the operands before it.
struct ContentStep {
  std::string_view operands;  // with the white space behind them
  std::string_view name;
};

// Takes the next operator off the front of `text`, which holds no inline image before it. The name is empty
// when only operands, or nothing, is left.
ContentStep takeStep(std::string_view& text);

// m, l, c and h.
bool buildsPath(std::string_view name);

// S, f, f* and n: what ends a path, painted or not.
bool endsPath(std::string_view name);

// The path operators of `text` that nothing in it has ended; other operators between them are left out.
// `begins` is whether the path begins in `text`, behind the end of an earlier one, or may go on from before
// it.
struct OpenPath {
  std::string text;
  bool begins;
};
OpenPath openPathOf(std::string_view text);

// W and W*.
bool clips(std::string_view name);

// The offset at which the six numbers before offset `end` begin.
std::size_t matrixBegin(std::string_view text, std::size_t end);

// `path` as it must be written in a user space that is transformed by `matrix`, so that it stays where it is.
// Empty when the matrix flattens everything.
std::string pathUnder(std::string_view path, const Matrix& matrix);

}  // namespace quillpress::cli
