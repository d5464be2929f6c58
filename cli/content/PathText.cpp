#include "cli/content/PathText.h"

#include <array>
#include <charconv>
#include <cmath>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// Operands are numbers, names and arrays.
bool isOperand(std::string_view word) {
  const char first = word.front();
  return isDigit(first) || first == '-' || first == '.' || first == '/' || first == '[' || first == ']';
}

// The start of the word that ends, white space aside, before `end`.
std::size_t wordBegin(std::string_view text, std::size_t end) {
  while (end > 0 && isWhite(text[end - 1])) --end;
  while (end > 0 && !isWhite(text[end - 1])) --end;
  return end;
}

// The offset behind the last operator that ends a path; npos without one.
std::size_t lastPathEnd(std::string_view text) {
  // From the end: what matters is mostly the last few words of a long text.
  std::size_t end = text.size();
  while (end > 0) {
    const std::size_t begin = wordBegin(text, end);
    if (endsPath(trimmed(text.substr(begin, end - begin)))) return end;
    end = begin;
  }
  return std::string_view::npos;
}

// Enough decimals for paths in the unit squares that drivers scale up to a page.
void appendCoordinate(std::string& text, double value) {
  constexpr int kDecimals = 8;
  // Room for the 309 digits of the largest number, its sign and its decimals.
  std::array<char, 400> buffer;
  if (!std::isfinite(value)) value = 0;
  const char* end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, kDecimals)
          .ptr;
  while (end[-1] == '0') --end;
  if (end[-1] == '.') --end;
  text.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
}

}  // namespace

ContentStep takeStep(std::string_view& text) {
  const char* const begin = text.data();
  while (true) {
    const std::string_view word = takeWord(text);
    if (!word.empty() && isOperand(word)) continue;
    const char* const operandsEnd = word.empty() ? text.data() : word.data();
    return {{begin, static_cast<std::size_t>(operandsEnd - begin)}, word};
  }
}

bool buildsPath(std::string_view name) {
  return name == "m" || name == "l" || name == "c" || name == "h";
}

bool endsPath(std::string_view name) {
  return name == "S" || name == "f" || name == "f*" || name == "n";
}

OpenPath openPathOf(std::string_view text) {
  const std::size_t end = lastPathEnd(text);
  OpenPath path{{}, end != std::string_view::npos};
  if (path.begins) text.remove_prefix(end);
  for (ContentStep step = takeStep(text); !step.name.empty(); step = takeStep(text)) {
    // A line width between two lines belongs to the graphics state and not to the path.
    if (!buildsPath(step.name)) continue;
    path.text.append(trimmed(step.operands)).append(" ").append(step.name).append("\n");
  }
  return path;
}

bool clips(std::string_view name) {
  return name == "W" || name == "W*";
}

std::size_t matrixBegin(std::string_view text, std::size_t end) {
  constexpr int kNumbers = 6;
  for (int i = 0; i < kNumbers; ++i) end = wordBegin(text, end);
  return end;
}

std::string pathUnder(std::string_view path, const Matrix& matrix) {
  if (!matrix.isInvertible()) return {};
  const double determinant = matrix.determinant();
  std::string mapped;
  for (ContentStep step = takeStep(path); !step.name.empty(); step = takeStep(path)) {
    while (const auto x = takeNumber(step.operands)) {
      // The inverse matrix, written out: points go back through the move first.
      const double dx = *x - matrix.tx;
      const double dy = takeNumber(step.operands).value_or(0) - matrix.ty;
      appendCoordinate(mapped, (dx * matrix.d - dy * matrix.c) / determinant);
      mapped += ' ';
      appendCoordinate(mapped, (dy * matrix.a - dx * matrix.b) / determinant);
      mapped += ' ';
    }
    mapped.append(step.name).append("\n");
  }
  return mapped;
}

}  // namespace quillpress::cli
