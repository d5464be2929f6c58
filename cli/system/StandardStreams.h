#pragma once

#include <string_view>

namespace quillpress::cli {

enum class StandardStream { kInput, kOutput, kError };

// Makes the standard streams carry bytes as they are, and failures to write show as such. False when a stream
// is closed and cannot be replaced by one whose use fails. To be called before anything else is opened.
bool prepareStreams();

// Whether somebody sits at the other end.
bool isTerminal(StandardStream stream);

// Writes UTF-8 to standard error in one call, so that lines of several processes do not mix. Nothing can be
// done when that fails.
void writeToStandardError(std::string_view text);

}  // namespace quillpress::cli
