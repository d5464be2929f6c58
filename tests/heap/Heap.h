#pragma once

#include <cstddef>
#include <cstdint>

// The memory that a test program gets from operator new, which this replaces: counted, bounded, made to fail
// at will, and set back to an earlier moment byte for byte. What the C library takes for itself is not looked
// at.
//
// Everything here concerns the one thread that watches; blocks of other threads pass by.
namespace quillpress::heap {

// While one exists, blocks that its thread makes belong to it. There is one at a time.
class Watch {
 public:
  Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  // Frees what is left of the blocks.
  ~Watch();

  // The blocks made so far, and those that are not deleted yet, with the checkpoints' own.
  [[nodiscard]] std::uint64_t made() const;
  [[nodiscard]] std::size_t left() const;

  // A block beyond these bounds, in bytes at one time and in all, fails. Without bounds at first.
  void bound(std::size_t atOnce, std::size_t inAll);

  // The n-th block from now on fails, counted from 1, and with `forEver` all after it.
  void failAt(std::uint64_t n, bool forEver);
  void failNoMore();

  // Whether a bound or failAt has made a block fail.
  [[nodiscard]] bool hasFailed() const;
};

// What is made meanwhile is nobody's: results that outlive a Watch.
class Unwatched {
 public:
  Unwatched();
  Unwatched(const Unwatched&) = delete;
  Unwatched& operator=(const Unwatched&) = delete;
  ~Unwatched();

 private:
  bool wasWatching_;
};

// A moment that the heap can be set back to. What an action makes is kept in an arena and copied; afterwards
// it may be written and deleted as often as one likes. Opening a converter takes milliseconds under
// sanitizers, going back to an open one some microseconds. Of several checkpoints each keeps its own part of
// the arena.
class Checkpoint {
 public:
  template <typename Action>
  explicit Checkpoint(Action make) {
    openArena();
    make();
    closeArena();
  }
  Checkpoint(const Checkpoint&) = delete;
  Checkpoint& operator=(const Checkpoint&) = delete;

  // Its blocks are counted no more. Objects that are still in them may be deleted.
  // REQUIRES: nothing has changed since the moment, or goBack was called.
  ~Checkpoint();

  // An object outside the heap that belongs to the moment: a static one that holds pointers into the heap.
  void add(void* object, std::size_t size);

  // REQUIRES: no Watch exists, or its blocks are of no use any more: this frees them.
  void goBack();

 private:
  void openArena();
  void closeArena();

  struct Copy {
    void* object;
    std::size_t size;
    unsigned char* bytes;
  };
  void copy(void* object, std::size_t size);

  static constexpr std::size_t kMostCopies = 4;
  Copy copies_[kMostCopies] = {};
  std::size_t count_ = 0;
  std::size_t arenaStart_ = 0;
  std::size_t arenaBlocks_ = 0;
};

}  // namespace quillpress::heap
