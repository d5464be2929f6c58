#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "umpd/rules/LauncherStruct.h"
#include "umpd/spooler/Identity.h"
#include "umpd/win32/NamedObjects.h"

namespace quillpress::driver {
// The sender's side of a channel to another process of the same user: a record in shared memory, an event
// that says that it is there, and one that says that it has been taken. The record has no lock: senders
// exclude each other by other means.
class MessageChannel {
 public:
  // `waitMilliseconds`: how long to wait for the receiver to take a record; INFINITE is without limit.
  MessageChannel(ChannelNames names, std::size_t recordSize, unsigned long waitMilliseconds);

  // Whether a receiver listens. When not, the last error tells why.
  [[nodiscard]] bool isReceiverReady() const;

  // Opens the record, or makes it, if it is not open yet.
  [[nodiscard]] bool openRecord();
  [[nodiscard]] std::span<std::byte> record() const { return section_.bytes(); }

  // Hands the record to the receiver and waits until it has been taken. False when nobody listens, when time
  // runs out, or, after an error box, when an event fails.
  [[nodiscard]] bool sendRecord() const;

 private:
  ChannelNames names_;
  SharedSection section_;
  unsigned long waitMilliseconds_;
};

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

// The launcher of the calling user, as the front end sees it: a process that may run or not, and that is told
// when a document starts and stops.
class LauncherProxy {
 public:
  LauncherProxy();

  // Whether the launcher runs and listens. When not, the last error tells why.
  [[nodiscard]] bool isReceiverReady() const { return channel_.isReceiverReady(); }

  // Starts the launcher unless it listens already. True when it has been started; that does not mean that it
  // listens yet.
  bool startLauncher() const;

  // Both wait without limit until the launcher has taken the message.
  bool sendStartPrint(const std::wstring& printerName);
  bool sendStopPrint(const std::wstring& printerName, const std::wstring& documentName,
                     const std::wstring& outputPath);

 private:
  InterProcessComms<LauncherStruct> channel_;
};

// A user whose log-on still starts the launcher of the old driver interface gets the new one: the set-up
// program runs for the printer, and this call waits for its end.
void runSetupProgramIfNeeded(const std::wstring& printerName, UserSid& user);
}  // namespace quillpress::driver
