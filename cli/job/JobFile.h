#pragma once

#include <string>

#include "cli/job/ByteSink.h"
#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// The file that holds the job, or standard input. Read once, in blocks, so that its length costs nothing.
class JobFile {
 public:
  // `path` may be "-". Throws InputError when it cannot be opened or is a directory.
  explicit JobFile(const std::string& path);

  // Whether `path` names this very file; "-" is standard output.
  [[nodiscard]] bool isSameAs(const std::string& path) const;

  // Hands the whole file to `sink` and finishes it. Of an EPS file with a binary header, only its
  // PostScript section counts as the file. Throws InputError when there is nothing or reading fails.
  void pumpInto(ByteSink& sink);

  // Fills the buffer from where the file stands, and tells how far: less only at the end. Throws InputError.
  std::size_t read(char* buffer, std::size_t size);

 private:
  Descriptor file_;
};

}  // namespace quillpress::cli
