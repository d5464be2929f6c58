#pragma once

#include <optional>
#include <string>

namespace quillpress::cli {

// Says where the messages of jobs go, as long as it lives; afterwards it is as it was before.
class MessageSwitch {
 public:
  enum class Target { kStandardError, kNowhere };

  explicit MessageSwitch(Target target);
  ~MessageSwitch();
  MessageSwitch(const MessageSwitch&) = delete;
  MessageSwitch& operator=(const MessageSwitch&) = delete;

 private:
  std::optional<std::string> before_;
};

}  // namespace quillpress::cli
