#pragma once

#include <string>
#include <string_view>

namespace quillpress::cli {

// Writes "quillpress: TEXT" and a line feed to standard error, the only place for text. What jobs and names
// of files bring along is made visible and shortened.
void say(std::string_view text);

// How messages begin.
enum class MessageForm {
  kCommandLine,  // "quillpress: "
  kPrintServer,  // "ERROR: " or "WARNING: ", by which CUPS knows what it reads
};
// From now on, for the whole process.
void setMessageForm(MessageForm form);

// Says "NAME: warning: TEXT", unless warnings are muted.
void warn(const std::string& name, std::string_view text);
// From now on, for the whole process.
void muteWarnings();

// `text` on one line, in UTF-8, with nothing in it that a terminal would obey: control characters and bytes
// that are no UTF-8 come as \x1B.
std::string visible(std::string_view text);

// At most 200 bytes of `text`, which is UTF-8: of a longer one the begin and the end, "..." between them.
std::string shortened(std::string_view text);

// What the system says about the present errno, for use at the end of a message.
std::string systemReason();

// "1 page", "2 pages".
std::string counted(unsigned long long number, std::string_view singular);

}  // namespace quillpress::cli
