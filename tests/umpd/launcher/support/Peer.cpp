#include "tests/umpd/launcher/support/Peer.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <utility>

namespace quillpress::harness {
namespace {

constexpr LONG kMostRecords = 100000;

Handle requireHandle(HANDLE handle, const char* what) {
  EXPECT_NE(handle, nullptr) << what << ": error " << GetLastError();
  return Handle(handle);
}

}  // namespace

Peer::Peer(Channel channel, Options options)
    : channel_(std::move(channel)),
      options_(std::move(options)),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      listening_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      received_(CreateSemaphoreW(nullptr, 0, kMostRecords, nullptr)),
      thread_([this] { listen(); }) {
  WaitForSingleObject(listening_.get(), INFINITE);
}

Peer::~Peer() {
  SetEvent(stop_.get());
  EXPECT_TRUE(thread_.endsWithin(10000));
  if (view_ != nullptr) UnmapViewOfFile(view_);
}

void Peer::makeObjects() {
  if (options_.memory) {
    section_ = requireHandle(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                sizeof(Record), channel_.memory().c_str()),
                             "the memory of the peer");
    view_ = MapViewOfFile(section_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0);
    std::memset(view_, kPattern, sizeof(Record));
  }
  if (options_.requestEvent) {
    request_ = requireHandle(CreateEventW(nullptr, FALSE, FALSE, channel_.requestEvent().c_str()),
                             "the request event of the peer");
  }
}

void Peer::listen() {
  makeObjects();
  const Handle mutex(options_.mutex ? CreateMutexW(nullptr, TRUE, channel_.mutex().c_str()) : nullptr);
  EXPECT_EQ(static_cast<bool>(mutex), options_.mutex);
  SetEvent(listening_.get());

  const std::array<HANDLE, 2> events{stop_.get(), request_.get()};
  const DWORD count = options_.requestEvent ? 2 : 1;
  while (WaitForMultipleObjects(count, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
    records_.push_back(options_.memory ? memory() : Record{});
    options_.onMessage(records_.back());
    ReleaseSemaphore(received_.get(), 1, nullptr);
    if (options_.acknowledges) acknowledge();
  }
  if (mutex) ReleaseMutex(mutex.get());
}

bool Peer::receives(DWORD milliseconds) const {
  return WaitForSingleObject(received_.get(), milliseconds) == WAIT_OBJECT_0;
}

Record Peer::memory() const {
  Record record;
  std::memcpy(record.data(), view_, record.size());
  return record;
}

void Peer::acknowledge() const {
  const Handle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, channel_.acknowledgeEvent().c_str()));
  EXPECT_TRUE(event) << "nobody waits for the peer";
  SetEvent(event.get());
}

}  // namespace quillpress::harness
