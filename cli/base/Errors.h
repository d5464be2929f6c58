#pragma once

#include <stdexcept>

namespace quillpress::cli {

// The command line asks for something that cannot be.
class UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The job is missing, empty, unreadable or not PostScript.
class InputError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What a page draws cannot be told in a PDF file.
class PageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What a page or the document says of itself has no place in the archive that is asked for.
class ArchiveError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The output, or the temporary file beside it, cannot be written.
class OutputError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace quillpress::cli
