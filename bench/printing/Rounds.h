#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

// Seconds on the system's finest clock.
inline double now() {
  LARGE_INTEGER ticks{};
  LARGE_INTEGER perSecond{};
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&perSecond);
  return static_cast<double>(ticks.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

// How long the work takes, in seconds.
template <typename Work>
double seconds(Work work) {
  const double start = now();
  work();
  return now() - start;
}

// The middle of what several rounds gave; a slow moment of the machine moves it little. REQUIRES: not empty.
inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
