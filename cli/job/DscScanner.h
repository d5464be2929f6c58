#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cli/job/ByteSink.h"

namespace quillpress::cli {

// Receives a job's bytes, and its structuring comments before the bytes of their lines.
class DscHandler {
 public:
  DscHandler() = default;
  DscHandler(const DscHandler&) = delete;
  DscHandler& operator=(const DscHandler&) = delete;
  virtual ~DscHandler() = default;

  // Every byte of the job comes through here, comment lines too.
  virtual void text(std::string_view bytes, std::uint64_t offset) = 0;

  // `keyword` stands without %% and colon, "Page"; `value` without white space at its ends.
  virtual void comment(std::string_view keyword, std::string_view value) = 0;

  virtual void endOfJob() = 0;
};

// Finds the document structuring comments of a job: lines that begin with %% and end with a carriage
// return, a line feed or both. Comments of embedded documents are not reported, and sections of counted
// data (%%BeginBinary, %%BeginData) are passed over without a look. Blocks may be cut anywhere.
class DscScanner final : public ByteSink {
 public:
  explicit DscScanner(DscHandler& handler) : handler_(handler) {}

  void write(std::string_view bytes, std::uint64_t offset) override;
  void finish() override;

  // Whether a section of counted data still lacks some.
  [[nodiscard]] bool isInData() const { return state_ != State::kLines; }

 private:
  // What the next bytes are.
  enum class State {
    kLines,        // lines, which may be comments
    kDataLineEnd,  // the rest of the line end of a comment that announced data
    kDataBytes,    // counted bytes
    kDataLines,    // counted lines
  };

  std::size_t takeHeld(std::string_view bytes);
  void passHeld();
  void scan(std::string_view bytes, std::uint64_t offset);
  std::size_t scanLines(std::string_view bytes, std::size_t from);
  [[nodiscard]] bool mayBeginComment(std::string_view bytes, std::size_t at) const;
  std::size_t skipDataLineEnd(std::string_view bytes, std::size_t from);
  std::size_t skipDataBytes(std::string_view bytes, std::size_t from);
  std::size_t skipDataLines(std::string_view bytes, std::size_t from);
  void passUpTo(std::string_view bytes, std::size_t end);
  void takeComment(std::string_view line);
  void beginData(std::string_view value);

  DscHandler& handler_;
  State state_ = State::kLines;
  std::string held_;  // the start of a comment line whose end has not come yet
  std::uint64_t heldOffset_ = 0;
  std::uint64_t blockOffset_ = 0;
  std::size_t passed_ = 0;          // bytes of the block that the handler has had
  char lastByte_ = '\n';            // the byte before the block
  std::uint64_t dataLeft_ = 0;      // bytes or lines
  State dataKind_ = State::kLines;  // what follows a DataLineEnd
  unsigned documentDepth_ = 0;
};

}  // namespace quillpress::cli
