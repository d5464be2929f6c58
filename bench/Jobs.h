#pragma once

#include <cstddef>
#include <string>

namespace quillpress::bench {

// Jobs of about `bytes` bytes, the same at every call, in the manner of the Windows PostScript driver.

/** Paths, colours and painting through short-named procedures. Makes no composite after its prologue. */
std::string vectorJob(std::size_t bytes);

/** Names, numbers, strings and arrays that are read and dropped; nothing is drawn. */
std::string tokenJob(std::size_t bytes);

/** One 8-bit RGB image of about `bytes` decoded bytes, read row by row with readhexstring. */
std::string hexImageJob(std::size_t bytes);

/** The same, read with readstring. */
std::string binaryImageJob(std::size_t bytes);

}  // namespace quillpress::bench
