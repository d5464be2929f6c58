#include "cli/base/Messages.h"

#include <cerrno>
#include <cstring>

#include "cli/base/Utf8.h"
#include "cli/system/StandardStreams.h"

namespace quillpress::cli {

namespace {

constexpr std::size_t kLongestMessage = 200;
constexpr std::string_view kLeftOut = "...";
// Of a long message the end often holds the reason, so it keeps a third of the room.
constexpr std::size_t kKeptEnd = kLongestMessage / 3;

bool areWarningsMuted = false;
MessageForm messageForm = MessageForm::kCommandLine;

// Control characters of ASCII, and those of U+0080 to U+009F, with which some terminals begin sequences too.
bool isControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  if (character.size() == 1) return first < 0x20 || first == 0x7F;
  return character.size() == 2 && first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

void appendEscaped(std::string& text, char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  text.append("\\x").append(1, kDigits[value >> 4U]).append(1, kDigits[value & 0xFU]);
}

void sayLine(std::string_view begin, std::string_view text) {
  const std::string line = shortened(visible(std::string(begin).append(text))) + "\n";
  writeToStandardError(line);
}

// The nearest place at or before `at` that cuts no character.
std::size_t characterBegin(std::string_view text, std::size_t at) {
  while (at > 0 && isContinuation(static_cast<unsigned char>(text[at]))) --at;
  return at;
}

}  // namespace

std::string visible(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    const std::string_view character = text.substr(0, length == 0 ? 1 : length);
    if (length == 0 || isControl(character)) {
      for (const char byte : character) appendEscaped(result, byte);
    } else {
      result.append(character);
    }
    text.remove_prefix(character.size());
  }
  return result;
}

std::string shortened(std::string_view text) {
  if (text.size() <= kLongestMessage) return std::string(text);
  const std::size_t keptBegin = kLongestMessage - kLeftOut.size() - kKeptEnd;
  std::size_t end = text.size() - kKeptEnd;
  while (end < text.size() && isContinuation(static_cast<unsigned char>(text[end]))) ++end;
  return std::string(text.substr(0, characterBegin(text, keptBegin)))
      .append(kLeftOut)
      .append(text.substr(end));
}

void say(std::string_view text) {
  sayLine(messageForm == MessageForm::kPrintServer ? "ERROR: " : "quillpress: ", text);
}

void setMessageForm(MessageForm form) {
  messageForm = form;
}

void warn(const std::string& name, std::string_view text) {
  if (areWarningsMuted) return;
  if (messageForm == MessageForm::kPrintServer) {
    sayLine("WARNING: ", name + ": " + std::string(text));
  } else {
    say(name + ": warning: " + std::string(text));
  }
}

void muteWarnings() {
  areWarningsMuted = true;
}

std::string systemReason() {
  return std::strerror(errno);
}

std::string counted(unsigned long long number, std::string_view singular) {
  return std::to_string(number) + " " + std::string(singular) + (number == 1 ? "" : "s");
}

}  // namespace quillpress::cli
