#include "postscript/lib/base/MemoryProbe.h"

#include <cstdint>
#include <new>

namespace quillpress {

namespace {

// Systems with 64-bit addresses promise more memory than they have, and end the process that takes them at
// their word; they refuse only what is far beyond. So there the system must offer several times the memory.
// With 32 bits it is the address space that ends, and what is promised is there.
constexpr std::size_t kHeadroom = sizeof(void*) > 4 ? 4 : 1;

}  // namespace

void probeMemory(std::size_t count, std::size_t size) {
  if (count > PTRDIFF_MAX / kHeadroom / size) throw std::bad_alloc();
  // A call of the function, which unlike a new expression no compiler may leave out.
  void* const memory = ::operator new(count* size* kHeadroom, std::nothrow);
  if (memory == nullptr) throw std::bad_alloc();
  // Given back at once: what counts is that the system did not refuse.
  ::operator delete(memory);
}

}  // namespace quillpress
