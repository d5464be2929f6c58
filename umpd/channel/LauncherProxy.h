#pragma once

#include <string>

#include "umpd/channel/MessageChannel.h"
#include "umpd/rules/LauncherStruct.h"

namespace quillpress::driver {

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

}  // namespace quillpress::driver
