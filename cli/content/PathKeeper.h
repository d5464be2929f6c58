#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/content/Matrix.h"

namespace quillpress::cli {

// Gives paths in a PDF the life that they have in PostScript. There the current path belongs to the graphics
// state and stays where it is when the transformation changes, so jobs fill a path between gsave and grestore
// and then stroke the same path, or build an arc under a scaling that they take back before they paint. The
// converter's text tells of it in that order, where PDF allows nothing between a path and its painting.
//
// Here a path that meets q, Q or cm is taken back, and written again right before it is painted or goes on:
// after a Q the path from before its q, after a cm with its points mapped to the new user space. All other
// text passes unchanged.
class PathKeeper {
 public:
  // The text to write for `text`: whole operators, as the converter returns them. Valid until the next call.
  std::string_view rewrite(std::string_view text);

 private:
  // A path to be written before it is painted or goes on: operators in the user space in which they were
  // built, shared by all the q that keep them, and what has been done to the user space since. A job may set
  // a path aside and save and turn thousands of times, and only writing it costs its length.
  struct KeptPath {
    std::shared_ptr<const std::string> operators;  // null for no path
    Matrix change;

    [[nodiscard]] bool isEmpty() const { return operators == nullptr; }
    void concat(const std::optional<Matrix>& matrix);
    [[nodiscard]] std::string text() const;
  };

  static KeptPath keep(std::string operators);
  [[nodiscard]] std::string openPathBefore(std::size_t end) const;
  void copyTo(std::size_t end);
  void passMarks();
  void passStep();
  void takePathBack(const std::string& path, std::size_t end);
  void beginAgainAt(std::size_t position, std::string begun);
  KeptPath takeSaved();
  void writeWaiting();

  std::string_view text_;
  std::size_t at_ = 0;  // what stands before it is written
  std::string output_;
  std::size_t floor_ = 0;  // where the operators that may belong to the written path begin
  std::string begun_;      // the written path's operators from before that
  KeptPath waiting_;
  std::vector<KeptPath> saved_;  // for each q the path before it
};

}  // namespace quillpress::cli
