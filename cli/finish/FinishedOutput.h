#pragma once

#include <memory>

#include "cli/archive/IntentProfile.h"
#include "cli/base/Options.h"
#include "cli/spool/Output.h"

namespace quillpress::cli {

// An output that takes a PDF, and hands on what the options make of it. The PDF waits in a file without a
// name. REQUIRES: the options outlive it.
class FinishedOutput final : public Output {
 public:
  // Throws UsageError when no archive can be made for the intent that is asked for, OutputError at once when
  // nothing could be written to the options' output.
  explicit FinishedOutput(const Options& options);
  ~FinishedOutput() override;

  [[nodiscard]] const std::string& folder() const override { return target_->folder(); }
  std::FILE* file() override;
  // Throws UsageError when the PDF has none of the pages that are wanted.
  void commit() override;
  [[nodiscard]] std::uint64_t bytesWritten() const override { return bytesWritten_; }
  [[nodiscard]] bool hasWarned() const override { return hasWarned_; }

 private:
  const Options& options_;
  IntentProfile intent_;
  std::unique_ptr<Output> target_;
  std::FILE* waiting_ = nullptr;
  bool hasWarned_ = false;
  std::uint64_t bytesWritten_ = 0;
};

}  // namespace quillpress::cli
