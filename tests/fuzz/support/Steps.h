#pragma once

#include <csetjmp>
#include <cstdint>

namespace quillpress::fuzz {

// Ends programs that would run for ever, such as "{} loop": in the fuzz build the compiler calls a function
// at each edge between blocks of code, and this counts them. Other builds never cut anything short, so the
// corpus holds only programs that end by themselves.
//
// A program is left by a long jump, without destructors: what it has made must be given up with the heap's
// checkpoint. The jump never comes out of the memory allocator or another part of the C library, because
// those are not compiled here.
class Steps {
 public:
  // Runs the action; false when it was cut short.
  template <typename Action>
  static bool within(std::int64_t steps, Action action) {
    if (setjmp(place()) != 0) return false;  // NOLINT(cert-err52-cpp): no other way leads out of any code
    count(steps);
    action();
    countNoMore();
    return true;
  }

  // The rest of the action may take its time, and is not left.
  static void countNoMore();

 private:
  static std::jmp_buf& place();
  static void count(std::int64_t steps);
};

}  // namespace quillpress::fuzz
