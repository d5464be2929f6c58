#pragma once

#include <cstddef>

namespace quillpress {

// Throws std::bad_alloc unless the system would give `count` items of `size` bytes. Called before many of
// them are made one by one.
void probeMemory(std::size_t count, std::size_t size);

}  // namespace quillpress
