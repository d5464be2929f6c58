#pragma once

#include <windows.h>

#include <cstdio>
#include <cstdlib>

// A benchmark whose surroundings are not as they should be measures nothing; the program ends.
inline void check(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "printing: %s failed, error %lu\n", what, GetLastError());
  std::exit(EXIT_FAILURE);
}
