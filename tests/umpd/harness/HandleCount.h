#pragma once

namespace quillpress::harness {

// The number of kernel handles that this process has open: what a leak makes grow.
unsigned long handleCount();

// The test fails unless the process has, within a second, no more handles open than `before`. Threads of
// Wine's own come and go, each with a handle or two.
void expectNoMoreHandlesThan(unsigned long before);

}  // namespace quillpress::harness
