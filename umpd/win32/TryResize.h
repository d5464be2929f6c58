#pragma once

#include <cstddef>
#include <exception>
#include <vector>

#include "win32/Windows.h"

namespace quillpress {

// Gives the buffer so many bytes, all zero. False, with the buffer empty, when there is not that much memory:
// sizes that another program tells may be anything.
inline bool tryResize(std::vector<BYTE>& buffer, std::size_t size) {
  buffer.clear();
  try {
    buffer.resize(size);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace quillpress
