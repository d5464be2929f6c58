#pragma once

#include <cstdio>
#include <string>

#include "cli/spool/Output.h"
#include "cli/system/Descriptor.h"
#include "cli/system/TemporaryName.h"

namespace quillpress::cli {

// The output, whole or not at all: a file is written beside its final place, without a name where the file
// system can do that, and takes that place only when it is complete and on the disk. Standard output and
// devices are written as they are.
class AtomicOutput final : public Output {
 public:
  // `path` may be "-". Throws OutputError at once when nothing could be written there.
  explicit AtomicOutput(const std::string& path);
  ~AtomicOutput() override;

  [[nodiscard]] const std::string& folder() const override { return folder_; }
  std::FILE* file() override;
  void commit() override;
  [[nodiscard]] std::uint64_t bytesWritten() const override { return bytesWritten_; }

 private:
  void examine(const std::string& path);
  Descriptor openBeside();
  void putInPlace();

  std::string target_;  // empty for standard output
  std::string folder_;
  TemporaryName name_;  // of the file beside the target
  bool isNameless_ = false;
  bool isPlainFile_ = true;
  unsigned permissions_;
  std::FILE* file_ = nullptr;
  std::uint64_t bytesWritten_ = 0;
};

}  // namespace quillpress::cli
