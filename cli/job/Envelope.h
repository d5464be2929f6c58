#pragma once

#include <string>

#include "cli/job/ByteSink.h"

namespace quillpress::cli {

/**
 * Takes off what a printer driver puts around a job for the printer: the universal exit (ESC %-12345X),
 * printer job language (lines beginning with @PJL), and the control-D of serial lines. What remains goes to
 * the next sink unchanged. Throws InputError when that is not PostScript.
 */
class Envelope final : public ByteSink {
 public:
  explicit Envelope(ByteSink& next) : next_(next) {}

  void write(std::string_view bytes, std::uint64_t offset) override;
  void finish() override;

  /** Whether another job follows behind the first one's universal exit. */
  [[nodiscard]] bool moreJobsFollow() const { return moreJobsFollow_; }

 private:
  enum class Place { Before, Inside, After };
  enum class Found { Envelope, NeedMore, Job };

  void passBefore();
  Found takeEnvelope();
  void openJob();
  void passInside(std::string_view bytes, std::uint64_t offset);
  void passAfter();
  void release();
  void closeJob();

  ByteSink& next_;
  Place place_ = Place::Before;
  bool ended_ = false;  // no more bytes will be written
  bool moreJobsFollow_ = false;
  // Bytes that cannot be judged before more of them are seen, and where they stand in the file.
  std::string held_;
  std::uint64_t heldOffset_ = 0;
};

}  // namespace quillpress::cli
