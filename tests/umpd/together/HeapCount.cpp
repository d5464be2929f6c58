#include "tests/umpd/together/HeapCount.h"

#include <cstdlib>
#include <map>
#include <utility>

namespace quillpress::harness {
namespace {

std::map<void*, std::size_t> sizes;
std::size_t takenBlocks = 0;

void* noted(void* block, std::size_t size) {
  if (block == nullptr) return nullptr;
  sizes[block] = size;
  ++takenBlocks;
  return block;
}

// Nothing happens for a block from before the counting.
void forget(void* block) {
  sizes.erase(block);
}

// Functions of the C runtime have its calling convention, so no lambda can stand in for them.

void* takeBlock(std::size_t size) {
  return noted(std::malloc(size), size);
}

void* takeCleared(std::size_t count, std::size_t size) {
  return noted(std::calloc(count, size), count * size);
}

void* resizeBlock(void* block, std::size_t size) {
  auto old = sizes.extract(block);
  void* const resized = std::realloc(block, size);
  // A refusal leaves the old block as it is.
  if (resized == nullptr && size != 0) sizes.insert(std::move(old));
  return noted(resized, size);
}

void giveBack(void* block) {
  forget(block);
  std::free(block);
}

}  // namespace

HeapCount::HeapCount(Library& library) {
  sizes.clear();
  takenBlocks = 0;
  library.replace("malloc", &takeBlock);
  library.replace("calloc", &takeCleared);
  library.replace("realloc", &resizeBlock);
  library.replace("free", &giveBack);
}

std::size_t HeapCount::blocks() {
  return sizes.size();
}

std::size_t HeapCount::bytes() {
  std::size_t sum = 0;
  for (const auto& [block, size] : sizes) sum += size;
  return sum;
}

std::size_t HeapCount::taken() {
  return takenBlocks;
}

}  // namespace quillpress::harness
