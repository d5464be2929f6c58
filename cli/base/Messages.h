#pragma once

#include <string>
#include <string_view>

namespace quillpress::cli {

/** Writes "quillpress: TEXT" and a line feed to standard error, the only place for text. */
void say(std::string_view text);

/** What the system says about the present errno, for use at the end of a message. */
std::string systemReason();

/** "1 page", "2 pages". */
std::string counted(unsigned long long number, std::string_view singular);

}  // namespace quillpress::cli
