// Built without sanitizers, because it writes what they must not let others touch: the headers of blocks. It
// tells AddressSanitizer what it does.

#include "tests/heap/Heap.h"

#include <cstdio>
#include <cstdlib>
#include <new>

#ifdef QUILLPRESS_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace quillpress::heap {

namespace {

enum class Kind : std::uint64_t { kFree = 0x2b7e151628aed2a6, kPassing, kWatched, kArena };

// Stands before each block.
struct alignas(16) Header {
  Header* previous;
  Header* next;
  std::size_t size;
  Kind kind;
};
static_assert(sizeof(Header) % alignof(std::max_align_t) == 0);

constexpr std::size_t kUnbounded = SIZE_MAX;

// Between the blocks of the arena, as much as AddressSanitizer keeps between its own.
constexpr std::size_t kGap = 16;

// Zero-initialised, hence good before main. The arena's pages cost nothing until they are used.
struct State {
  Header watched;  // of a ring
  std::uint64_t made;
  std::uint64_t failing;  // the number of the block that fails, from 1; 0: none
  std::size_t blocks;     // watched ones
  std::size_t bytes;      // of these
  std::size_t bytesInAll;
  std::size_t bytesAtOnceBound;
  std::size_t bytesInAllBound;
  bool failsForEver;
  bool hasFailed;
  bool arenaIsOpen;
  std::size_t arenaUsed;
  std::size_t arenaBlocks;   // not deleted
  Header* deletedFromArena;  // since the checkpoint, chained by `next`
};
State state;

constexpr std::size_t kArenaSize = std::size_t{16} << 20U;
alignas(16) unsigned char arena[kArenaSize];

thread_local bool isWatching = false;

[[noreturn]] void complain(const char* what) {
  std::fprintf(stderr, "tests/heap: %s\n", what);
  std::abort();
}

#ifdef QUILLPRESS_ADDRESS_SANITIZER
void forbid(const void* start, std::size_t size) {
  __asan_poison_memory_region(start, size);
}
void permit(const void* start, std::size_t size) {
  __asan_unpoison_memory_region(start, size);
}
#else
void forbid(const void* /*start*/, std::size_t /*size*/) {}
void permit(const void* /*start*/, std::size_t /*size*/) {}
#endif

// Word by word, and volatile, so that no compiler makes it a call of memcpy: AddressSanitizer looks at those.
// REQUIRES: both are aligned for words, and have room for a whole number of them.
void copyWords(void* to, const void* from, std::size_t size) {
  auto* target = static_cast<volatile std::uint64_t*>(to);
  const auto* source = static_cast<const volatile std::uint64_t*>(from);
  for (std::size_t i = 0; i < (size + 7) / 8; ++i) target[i] = source[i];
}

void* dataOf(Header* header) {
  return header + 1;
}
Header* headerOf(void* data) {
  return static_cast<Header*>(data) - 1;
}

void link(Header* header) {
  if (state.watched.next == nullptr) state.watched.next = state.watched.previous = &state.watched;
  header->previous = &state.watched;
  header->next = state.watched.next;
  header->next->previous = header;
  state.watched.next = header;
  ++state.blocks;
  state.bytes += header->size;
}

void unlink(Header* header) {
  header->previous->next = header->next;
  header->next->previous = header->previous;
  --state.blocks;
  state.bytes -= header->size;
}

bool mustFail(std::size_t size) {
  ++state.made;
  const bool isChosen = state.failing != 0 &&
                        (state.made == state.failing || (state.failsForEver && state.made > state.failing));
  const bool isTooMuch = size > state.bytesAtOnceBound || state.bytes > state.bytesAtOnceBound - size ||
                         size > state.bytesInAllBound || state.bytesInAll > state.bytesInAllBound - size;
  if (!isChosen && !isTooMuch) {
    state.bytesInAll += size;
    return false;
  }
  state.hasFailed = true;
  return true;
}

void* takeFromArena(std::size_t size) {
  const std::size_t whole = (sizeof(Header) + size + kGap + 15) / 16 * 16;
  if (whole > kArenaSize - state.arenaUsed) complain("the arena is too small");
  auto* header = reinterpret_cast<Header*>(arena + state.arenaUsed);
  state.arenaUsed += whole;
  header->size = size;
  header->kind = Kind::kArena;
  ++state.arenaBlocks;
  permit(dataOf(header), size);
  return dataOf(header);
}

void giveToArena(Header* header) {
  forbid(dataOf(header), header->size);
  header->kind = Kind::kFree;
  header->next = state.deletedFromArena;
  state.deletedFromArena = header;
  --state.arenaBlocks;
}

// Null when there is no memory for it, or is to be none.
void* allocate(std::size_t size) noexcept {
  if (state.arenaIsOpen && isWatching) return takeFromArena(size);
  if (isWatching && mustFail(size)) return nullptr;
  if (size > SIZE_MAX / 2) return nullptr;
  auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
  if (header == nullptr) return nullptr;
  header->size = size;
  header->kind = isWatching ? Kind::kWatched : Kind::kPassing;
  if (isWatching) link(header);
  forbid(header, sizeof(Header));
  return dataOf(header);
}

void* allocateOrThrow(std::size_t size) {
  void* data = allocate(size);
  if (data == nullptr) throw std::bad_alloc();
  return data;
}

void deallocate(void* data) noexcept {
  if (data == nullptr) return;
  Header* header = headerOf(data);
  switch (header->kind) {
    case Kind::kArena:
      giveToArena(header);
      return;
    case Kind::kWatched:
      unlink(header);
      break;
    case Kind::kPassing:
      break;
    case Kind::kFree:
    default:
      complain("deleted twice, or never made");
  }
  header->kind = Kind::kFree;
  std::free(header);
}

void freeWatched() {
  while (state.blocks > 0) deallocate(dataOf(state.watched.next));
}

}  // namespace

Watch::Watch() {
  if (isWatching) complain("two watches at once");
  state.made = 0;
  state.bytesInAll = 0;
  state.hasFailed = false;
  bound(kUnbounded, kUnbounded);
  failNoMore();
  isWatching = true;
}

Watch::~Watch() {
  isWatching = false;
  freeWatched();
}

std::uint64_t Watch::made() const {
  return state.made;
}

std::size_t Watch::left() const {
  return state.blocks + state.arenaBlocks;
}

void Watch::bound(std::size_t atOnce, std::size_t inAll) {
  state.bytesAtOnceBound = atOnce;
  state.bytesInAllBound = inAll;
}

void Watch::failAt(std::uint64_t n, bool forEver) {
  state.failing = state.made + n;
  state.failsForEver = forEver;
}

void Watch::failNoMore() {
  state.failing = 0;
}

bool Watch::hasFailed() const {
  return state.hasFailed;
}

Unwatched::Unwatched() : wasWatching_(isWatching) {
  isWatching = false;
}

Unwatched::~Unwatched() {
  isWatching = wasWatching_;
}

void Checkpoint::openArena() {
  if (isWatching) complain("a checkpoint within a watch");
  arenaStart_ = state.arenaUsed;
  arenaBlocks_ = state.arenaBlocks;
  forbid(arena + arenaStart_, kArenaSize - arenaStart_);
  state.arenaIsOpen = true;
  isWatching = true;
}

void Checkpoint::closeArena() {
  isWatching = false;
  state.arenaIsOpen = false;
  state.deletedFromArena = nullptr;
  arenaBlocks_ = state.arenaBlocks - arenaBlocks_;
  copy(arena + arenaStart_, state.arenaUsed - arenaStart_);
}

Checkpoint::~Checkpoint() {
  state.arenaBlocks -= arenaBlocks_;
  for (std::size_t i = 0; i < count_; ++i) std::free(copies_[i].bytes);
}

void Checkpoint::copy(void* object, std::size_t size) {
  if (count_ == kMostCopies) complain("too many objects in the checkpoint");
  auto* bytes = static_cast<unsigned char*>(std::malloc((size + 7) / 8 * 8));
  if (bytes == nullptr) complain("no memory for the checkpoint");
  copyWords(bytes, object, size);
  copies_[count_++] = {object, size, bytes};
}

void Checkpoint::add(void* object, std::size_t size) {
  copy(object, size);
}

void Checkpoint::goBack() {
  freeWatched();
  for (Header* header = state.deletedFromArena; header != nullptr; header = header->next) {
    permit(dataOf(header), header->size);
    ++state.arenaBlocks;
  }
  state.deletedFromArena = nullptr;
  for (std::size_t i = 0; i < count_; ++i) copyWords(copies_[i].object, copies_[i].bytes, copies_[i].size);
}

}  // namespace quillpress::heap

void* operator new(std::size_t size) {
  return quillpress::heap::allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return quillpress::heap::allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return quillpress::heap::allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return quillpress::heap::allocate(size);
}
void operator delete(void* data) noexcept {
  quillpress::heap::deallocate(data);
}
void operator delete[](void* data) noexcept {
  quillpress::heap::deallocate(data);
}
void operator delete(void* data, std::size_t /*size*/) noexcept {
  quillpress::heap::deallocate(data);
}
void operator delete[](void* data, std::size_t /*size*/) noexcept {
  quillpress::heap::deallocate(data);
}
void operator delete(void* data, const std::nothrow_t& /*tag*/) noexcept {
  quillpress::heap::deallocate(data);
}
void operator delete[](void* data, const std::nothrow_t& /*tag*/) noexcept {
  quillpress::heap::deallocate(data);
}
