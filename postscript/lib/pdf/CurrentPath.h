#pragma once

#include <string_view>

#include "postscript/lib/pdf/PageContent.h"

namespace quillpress {

// The path under construction, as far as it takes to write it. A move is written only when something is drawn
// from there, so that a run of moves leaves one "m".
//
// While a move is pending, nothing in the content leads to the current point. The current point, the start of
// its subpath and whether a path is open belong to the graphics state, which grestore brings back; what is
// pending and what has been written belong to the page content, which grestore does not take back, so these
// two stay.
class CurrentPath {
 public:
  [[nodiscard]] Point point() const { return point_; }  // in the user space in which it was made

  // Whether a move has been written and nothing has ended the path.
  [[nodiscard]] bool isOpen() const { return open_; }

  // Makes a new current point; its "m" is pending.
  void moveTo(Point point);
  void writePendingMove(PageContent& content);

  // Write one step; the current point moves with it.
  void writeMove(PageContent& content, Point point);
  void writeLine(PageContent& content, Point point);
  void writeCurve(PageContent& content, Point control1, Point control2, Point end);
  void writeClose(PageContent& content);

  // Writes a painting or clipping operator, which ends the path.
  void writeEnd(PageContent& content, std::string_view operatorText);

  // Ends the path without painting it: with "n", if anything of it has been written.
  void abandon(PageContent& content);

  // An operator has ended what was written, within its own text.
  void noteNothingWritten() { written_ = false; }

  // Takes over what belongs to the page content from the path of a graphics state that goes.
  void keepContentOf(const CurrentPath& left);

  // Keeps the current point only, for content that is written apart from the page's.
  void beginApart();

 private:
  Point point_;
  Point subpathStart_;    // where closepath goes back to
  bool open_ = false;     // see isOpen
  bool pending_ = false;  // a move has been made and not been written
  bool written_ = false;  // something of a path stands in the content that nothing has ended yet
};

}  // namespace quillpress
