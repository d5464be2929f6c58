#include "postscript/lib/pdf/CurrentPath.h"

namespace quillpress {

void CurrentPath::moveTo(Point point) {
  point_ = point;
  subpathStart_ = point;
  pending_ = true;
}

void CurrentPath::writePendingMove(PageContent& content) {
  if (!pending_) return;
  pending_ = false;
  // Kept: the coordinates as they were given, whatever user space has become since the move
  // (transforms/pending-move.ps).
  writeMove(content, point_);
}

void CurrentPath::writeMove(PageContent& content, Point point) {
  content.appendPoint(point, 'm');
  point_ = point;
  subpathStart_ = point;
  open_ = true;
  written_ = true;
}

void CurrentPath::writeLine(PageContent& content, Point point) {
  content.appendPoint(point, 'l');
  point_ = point;
  written_ = true;
}

void CurrentPath::writeCurve(PageContent& content, Point control1, Point control2, Point end) {
  content.appendCurve(control1, control2, end);
  point_ = end;
  written_ = true;
}

void CurrentPath::writeClose(PageContent& content) {
  content.append("h ");
  point_ = subpathStart_;
  open_ = false;
  written_ = true;
}

void CurrentPath::writeEnd(PageContent& content, std::string_view operatorText) {
  content.append(operatorText);
  // Kept: a pending move stays pending, whatever is painted or clipped in between (painting/stroke.ps).
  open_ = false;
  written_ = false;
}

void CurrentPath::abandon(PageContent& content) {
  if (written_) content.append("n\n");
  open_ = false;
  pending_ = false;
  written_ = false;
}

void CurrentPath::keepContentOf(const CurrentPath& left) {
  pending_ = left.pending_;
  written_ = left.written_;
}

void CurrentPath::beginApart() {
  open_ = false;
  pending_ = false;
  written_ = false;
}

}  // namespace quillpress
