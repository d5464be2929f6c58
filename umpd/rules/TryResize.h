#pragma once

#include <cstddef>
#include <exception>
#include <vector>

namespace quillpress::driver {

// Gives the buffer so many elements, all zero. False, with the buffer empty, when there is not that much
// memory: sizes that another program tells may be anything.
template <typename Element>
bool tryResize(std::vector<Element>& buffer, std::size_t size) {
  buffer.clear();
  try {
    buffer.resize(size);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace quillpress::driver
