#pragma once

#include <string>
#include <string_view>

#include "cli/job/ByteSink.h"

namespace quillpress::cli {

// Takes off what a printer driver puts around a job for the printer: the universal exit (ESC %-12345X),
// printer job language (lines beginning with @PJL), and the control-D of serial lines. What remains goes to
// the next sink unchanged. Throws InputError when that is not PostScript.
class Envelope final : public ByteSink {
 public:
  explicit Envelope(ByteSink& next) : next_(next) {}

  void write(std::string_view bytes, std::uint64_t offset) override;
  void finish() override;

  // Whether another job follows behind the first one's universal exit.
  [[nodiscard]] bool moreJobsFollow() const { return moreJobsFollow_; }

 private:
  enum class Place { kBefore, kInside, kAfter };
  enum class Found { kEnvelope, kNeedMore, kJob };

  void passBefore();
  Found takeEnvelope();
  Found takePiece(std::string_view& text);
  bool takeLongLine(std::string_view& text);
  void openJob();
  void passInside(std::string_view bytes, std::uint64_t offset);
  void passAfter();
  void release();
  void closeJob();

  ByteSink& next_;
  Place place_ = Place::kBefore;
  bool ended_ = false;  // no more bytes will be written
  bool moreJobsFollow_ = false;
  bool isInLongLine_ = false;  // behind the start of a line of printer language that is too long to be kept
  // Bytes that cannot be judged before more of them are seen, and where they stand in the file.
  std::string held_;
  std::uint64_t heldOffset_ = 0;
};

}  // namespace quillpress::cli
