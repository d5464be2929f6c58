#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cli/conversion/ChunkFeeder.h"
#include "cli/conversion/JobRunner.h"
#include "cli/conversion/PageOutput.h"
#include "cli/job/DscScanner.h"
#include "cli/job/JobComments.h"

namespace quillpress::cli {

// Where the job comes from and how it is run.
struct ConversionSettings {
  std::string job;  // path, or "-" for standard input
  std::size_t chunkSize;
  bool keepGoing;  // after an error go on with the next page
};

// Runs a job page by page. What stands before the first page, prologue and set-up, counts as part of it; a
// job without page comments is one page. After an error the page is dropped; then the job either goes on
// with its next page or is only read for its comments.
class Conversion final : public DscHandler {
 public:
  Conversion(ConversionSettings settings, JobRunner& runner, PageOutput& output);

  void text(std::string_view bytes, std::uint64_t offset) override;
  void comment(std::string_view keyword, std::string_view value) override;
  void endOfJob() override;

  [[nodiscard]] bool hasFailed() const { return hasFailed_; }
  [[nodiscard]] const JobComments& comments() const { return comments_; }

  // Whether a job without an error has ended inside a string, a procedure or an image.
  [[nodiscard]] bool endsInside() const { return endsInside_; }

 private:
  // What happens to the text of the job.
  enum class State {
    kRunning,
    kSkipping,  // up to the next page
    kStopped,
  };

  void nextPage();
  void endPage();
  void run(std::string_view chunk, std::uint64_t offset);
  void fail(const std::string& message);
  [[nodiscard]] std::string pageName() const;
  [[nodiscard]] std::string place(std::string_view chunk, std::uint64_t offset) const;

  ConversionSettings settings_;
  JobRunner& runner_;
  PageOutput& output_;
  JobComments comments_;
  ChunkFeeder feeder_;
  State state_ = State::kRunning;
  bool isBeforePages_ = true;
  bool hasFailed_ = false;
  bool endsInside_ = false;
  std::uint64_t page_ = 1;
  std::uint64_t endOffset_ = 0;  // of what has run
};

}  // namespace quillpress::cli
