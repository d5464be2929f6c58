#pragma once

#include <windows.h>

#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Handle.h"
#include "tests/umpd/launcher/support/Record.h"

namespace quillpress::harness {

// Plays the library for a launcher: whatever record a test likes, friendly or not.
class Sender {
 public:
  explicit Sender(Channel channel);
  ~Sender();
  Sender(const Sender&) = delete;
  Sender& operator=(const Sender&) = delete;

  // Hands the record over. REQUIRES: the launcher listens
  void begin(const Record& record);

  // Whether the launcher acknowledges within so many milliseconds.
  [[nodiscard]] bool isAcknowledged(DWORD milliseconds = 10000) const;

  // Both.
  [[nodiscard]] bool send(const Record& record) {
    begin(record);
    return isAcknowledged();
  }

 private:
  Channel channel_;
  Handle acknowledge_;
  Handle request_;
  Handle section_;
};

// The records of the library.
Record startPrintRecord(const std::string& printerName);
Record stopPrintRecord(const std::string& printerName, const std::string& documentName,
                       const std::string& outputPath);

}  // namespace quillpress::harness
