// Built without sanitizers: what counts the edges has none that are counted.

#include "tests/fuzz/support/Steps.h"

#include <exception>

namespace quillpress::fuzz {

namespace {

constexpr std::int64_t kNotCounting = -1;

std::int64_t left = kNotCounting;
std::jmp_buf wayOut;

}  // namespace

std::jmp_buf& Steps::place() {
  return wayOut;
}

void Steps::count(std::int64_t steps) {
  left = steps;
}

void Steps::countNoMore() {
  left = kNotCounting;
}

// The linker directs the calls here (libFuzzer has a function of that name that does nothing).
extern "C" void __wrap___sanitizer_cov_trace_pc();
extern "C" void __wrap___sanitizer_cov_trace_pc() {
  if (left < 0) return;
  if (left > 0) {
    --left;
    return;
  }
  // An exception on its way would be counted as such for ever.
  if (std::uncaught_exceptions() > 0) return;
  left = kNotCounting;
  std::longjmp(wayOut, 1);  // NOLINT(cert-err52-cpp)
}

}  // namespace quillpress::fuzz
