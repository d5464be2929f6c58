#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

struct PdfObject;

namespace quillpress::cli {

// One open converter. Pages begin with the identity matrix, so that user space is the job's own.
class Converter {
 public:
  // Throws std::bad_alloc when there is no memory for one.
  Converter();
  ~Converter();
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Runs the next piece of the job, at most INT_MAX bytes, and returns the content text that it made, valid
  // until the next call; nothing when the job failed in it.
  std::optional<std::string_view> convert(std::string_view piece);

  void startPage();

  // Why the last piece failed, without a line end.
  [[nodiscard]] std::string errorText() const;

  // Every image and pattern made so far by this process, in order. Valid until the next call.
  [[nodiscard]] std::span<const PdfObject* const> objects() const;

 private:
  void* handle_;
  bool isContentTooLong_ = false;
};

}  // namespace quillpress::cli
