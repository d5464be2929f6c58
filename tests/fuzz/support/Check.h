#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace quillpress::fuzz {

[[noreturn]] inline void failCheck(const char* file, int line, const char* text) {
  std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, text);
  std::abort();
}

// Shows both texts, since the condition alone says little.
[[noreturn]] inline void failComparison(const char* file, int line, std::string_view left,
                                        std::string_view right) {
  std::fprintf(stderr, "%s:%d: differ:\n--- %.*s\n+++ %.*s\n", file, line, static_cast<int>(left.size()),
               left.data(), static_cast<int>(right.size()), right.data());
  std::abort();
}

}  // namespace quillpress::fuzz

// Ends the program, and with it the search, when a promise is broken.
#define FUZZ_CHECK(condition) \
  ((condition) ? static_cast<void>(0) : quillpress::fuzz::failCheck(__FILE__, __LINE__, #condition))

// The same for two texts that must be equal.
#define FUZZ_CHECK_EQUAL(left, right)       \
  ((left) == (right) ? static_cast<void>(0) \
                     : quillpress::fuzz::failComparison(__FILE__, __LINE__, left, right))
