#pragma once

#include <type_traits>
#include <utility>

#include "umpd/launcher/MessageChannel.h"

namespace quillpress {

// A channel whose messages are records of one type.
template <typename Record>
class InterProcessComms : public MessageChannel {
  static_assert(std::is_trivially_copyable_v<Record> && alignof(Record) == 1);

 public:
  InterProcessComms(ChannelNames names, unsigned long waitMilliseconds)
      : MessageChannel(std::move(names), sizeof(Record), waitMilliseconds) {}

  // The record as all processes see it. REQUIRES: openRecord() has succeeded.
  [[nodiscard]] Record& message() const { return *reinterpret_cast<Record*>(record().data()); }
};

}  // namespace quillpress
