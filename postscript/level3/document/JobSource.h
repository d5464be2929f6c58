#pragma once

#include <functional>
#include <vector>

#include "postscript/level3/document/CommentScanner.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// The job as the interpreter reads it: what printer drivers wrap around the PostScript (a printer language's
// commands, the binary header of an EPS file, end-of-file characters) is left out, and comments are looked at
// as they pass.
class JobSource final : public ByteSource {
 public:
  // Called with each piece, once its comments have been taken.
  using Observer = std::function<void()>;

  explicit JobSource(SourcePointer inner, Observer observer);

  const CommentScanner& comments() const { return comments_; }
  // How far the file goes before the PostScript begins, so that offsets count from the file's start.
  std::uint64_t start() const { return start_; }
  // How far into the file the job has been read; the white space that ended the last word does not count.
  std::uint64_t reached() const;
  // True when the file behind the job could not be read to its end.
  bool isUnreadable() const { return isUnreadable_; }
  // What its end has been met in the middle of, such as "a string"; empty when nothing was missing.
  std::string_view cutOffWithin() const { return cutOffWithin_; }
  void endedWithin(std::string_view what) override {
    if (cutOffWithin_.empty()) cutOffWithin_ = what;
  }

 private:
  Bytes nextBlock() override;
  void release() override { inner_->close(); }

  bool fill(std::vector<Byte>& block);
  void skipWrapping();

  SourcePointer inner_;
  Observer observer_;
  CommentScanner comments_;
  std::vector<Byte> present_;
  std::uint64_t presentStart_ = 0;  // its place in what has been handed out
  std::vector<Byte> ahead_;
  std::uint64_t start_ = 0;
  std::uint64_t left_ = UINT64_MAX;
  // Of what has been handed out, the line end at the very end left out.
  std::uint64_t length_ = 0;
  std::string_view cutOffWithin_;
  bool isUnreadable_ = false;
  bool hasBegun_ = false;
  bool isOver_ = false;
};

}  // namespace quillpress::level3
