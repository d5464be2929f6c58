#include "cli/conversion/ErrorSearch.h"

#include <algorithm>
#include <chrono>

#include "cli/conversion/Aside.h"
#include "cli/conversion/JobRunner.h"
#include "cli/job/DscScanner.h"
#include "cli/job/Envelope.h"
#include "cli/job/JobFile.h"

namespace quillpress::cli {

namespace {

// The most pieces that a chunk is fed in: each one costs a call.
constexpr std::uint64_t kMostPieces = std::uint64_t{1} << 20;
// A job that takes longer up to its error is long enough for the chunk to be place enough.
constexpr std::chrono::seconds kLongestSearch{10};

// Runs a job up to a chunk, and that chunk in small pieces, until one fails.
class ErrorSearch final : public DscHandler {
 public:
  ErrorSearch(std::uint64_t begin, std::uint64_t end)
      : begin_(begin), end_(end), step_((end - begin) / kMostPieces + 1) {}

  void text(std::string_view bytes, std::uint64_t offset) override {
    // The job may have been changed since, and not fail any more.
    if (offset >= end_) isOver_ = true;
    while (!bytes.empty() && !isOver_) {
      // Up to the chunk in blocks, as fast as it goes; only the chunk is fed step by step.
      const std::uint64_t wanted = offset < begin_ ? begin_ - offset : step_;
      const std::string_view piece = bytes.substr(0, wanted);
      run(piece, offset);
      bytes.remove_prefix(piece.size());
      offset += piece.size();
    }
  }

  void comment(std::string_view keyword, std::string_view /*value*/) override {
    if (keyword != "Page" || isOver_) return;
    // As the first run did: what comes before the first page is part of it.
    if (pages_++ > 0) runner_.converter().startPage();
  }

  void endOfJob() override {}

  [[nodiscard]] std::optional<std::uint64_t> found() const { return found_; }

 private:
  void run(std::string_view piece, std::uint64_t offset) {
    const bool failed = !runner_.converter().convert(piece);
    if (failed && offset >= begin_ && offset < end_) found_ = offset;
    isOver_ = failed || offset + piece.size() >= end_;
  }

  std::uint64_t begin_;
  std::uint64_t end_;
  std::uint64_t step_;
  JobRunner runner_;
  unsigned pages_ = 0;
  bool isOver_ = false;
  std::optional<std::uint64_t> found_;
};

std::optional<std::uint64_t> runAgain(const std::string& path, std::uint64_t begin, std::uint64_t end) {
  JobFile job(path);
  if (!job.isRepeatable()) return std::nullopt;
  ErrorSearch search(begin, end);
  DscScanner scanner(search);
  Envelope envelope(scanner);
  job.pumpInto(envelope);
  return search.found();
}

}  // namespace

std::optional<std::uint64_t> findError(const std::string& path, std::uint64_t begin, std::uint64_t end) {
  // One byte has only one place.
  if (end - begin == 1) return begin;
  return askAside(kLongestSearch, [&] { return runAgain(path, begin, end); });
}

}  // namespace quillpress::cli
