#pragma once

#include <optional>
#include <string_view>

namespace quillpress::level3 {

// Which way up pages are meant to be read, as the structure comments of a job have it.
class PageOrientation {
 public:
  // A comment of the job, from its first percent sign on and without its line end, in the order of the job.
  void take(std::string_view comment);

  // How far the page that is being painted has to be turned with the clock for reading, in degrees; nothing
  // when neither a comment nor the text, which runs at `textAngle`, tells.
  [[nodiscard]] std::optional<int> angle(std::optional<int> textAngle, bool isPageWide) const;

 private:
  bool isStructured_ = false;  // the job says that it follows the conventions
  bool isPage_ = false;        // the first page has begun
  int nesting_ = 0;            // documents within the document
  // In degrees: 0 for portrait, 90 for landscape, any quarter for a matrix.
  std::optional<int> ofDocument_;
  std::optional<int> ofPages_;
  std::optional<int> ofPage_;
  std::optional<int> asViewed_;
};

}  // namespace quillpress::level3
