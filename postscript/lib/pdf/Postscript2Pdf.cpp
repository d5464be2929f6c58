#include "postscript/lib/pdf/Postscript2Pdf.h"

#include <utility>

#include "postscript/lib/base/DebugOutput.h"
#include "postscript/lib/base/Ex.h"
#include "postscript/lib/pdf/GraphicsOperators.h"

namespace quillpress {

Postscript2Pdf::Postscript2Pdf(const Matrix& defaultMatrix) {
  startPage(defaultMatrix);
  registerGraphicsOperators(*this);
  interpreter_.loadPrologue();
}

bool Postscript2Pdf::convert(const char* data, int length) {
  ++callNumber_;
  content_.clear();
  try {
    interpreter_.run(data, length);
  } catch (const Ex& error) {
    errorText_ = "Exception:" + error.formatted();
    writeDebugOutput(errorText_);
    return false;
  }
  return true;
}

void Postscript2Pdf::startPage(const Matrix& defaultMatrix) {
  ++pageNumber_;
  defaultMatrix_ = defaultMatrix;
  pathPending_ = false;
  pathWritten_ = false;
  inPattern_ = false;
  states_.clear();
  pushFreshState();
}

void Postscript2Pdf::pushFreshState() {
  states_.emplace_back().ctm = defaultMatrix_;
}

void Postscript2Pdf::pushStateCopy() {
  states_.push_back(GraphicsState(states_.back()));
}

void Postscript2Pdf::popState() {
  if (states_.empty()) THROW_EX("No graphics states to pop");
  states_.pop_back();
  if (states_.empty()) pushFreshState();
}

Postscript2Pdf::PageDrawing Postscript2Pdf::suspendPageDrawing() {
  PageDrawing drawing{
      states_,    std::exchange(savedDepths_, {}), interpreter_.saveLevel(), pathPending_, pathWritten_,
      pageNumber_};
  pathPending_ = false;
  pathWritten_ = false;
  state().pathOpen = false;
  return drawing;
}

void Postscript2Pdf::resumePageDrawing(PageDrawing drawing) {
  savedDepths_ = std::move(drawing.savedDepths);
  interpreter_.changeSaveLevel(drawing.saveLevel - interpreter_.saveLevel());
  if (drawing.pageNumber != pageNumber_) return;
  states_ = std::move(drawing.states);
  pathPending_ = drawing.pathPending;
  pathWritten_ = drawing.pathWritten;
}

void Postscript2Pdf::rememberSave() {
  savedDepths_.push_back(states_.size());
  interpreter_.changeSaveLevel(1);
}

void Postscript2Pdf::restoreToSave() {
  if (savedDepths_.empty()) return;
  const std::size_t depth = savedDepths_.back();
  savedDepths_.pop_back();
  interpreter_.changeSaveLevel(-1);
  while (states_.size() > depth) {
    content_.append("Q ");
    popState();
  }
}

void Postscript2Pdf::moveTo(Point point) {
  state().currentPoint = point;
  state().subpathStart = point;
  pathPending_ = true;
}

// Kept: the coordinates as they were given, whatever user space has become since the move.
void Postscript2Pdf::writePendingMove() {
  if (!pathPending_) return;
  pathPending_ = false;
  writeMove(state().currentPoint);
}

void Postscript2Pdf::writeMove(Point point) {
  content_.appendPoint(point, 'm');
  state().currentPoint = point;
  state().subpathStart = point;
  state().pathOpen = true;
  pathWritten_ = true;
}

void Postscript2Pdf::writeLine(Point point) {
  content_.appendPoint(point, 'l');
  state().currentPoint = point;
  pathWritten_ = true;
}

void Postscript2Pdf::writeCurve(Point control1, Point control2, Point end) {
  content_.appendCurve(control1, control2, end);
  state().currentPoint = end;
  pathWritten_ = true;
}

void Postscript2Pdf::writeClosePath() {
  content_.append("h ");
  state().currentPoint = state().subpathStart;
  state().pathOpen = false;
  pathWritten_ = true;
}

// Kept: a pending move stays pending, whatever is painted or clipped in between.
void Postscript2Pdf::endPath(std::string_view operatorText) {
  content_.append(operatorText);
  state().pathOpen = false;
  pathWritten_ = false;
}

void Postscript2Pdf::abandonPath() {
  pathPending_ = false;
  state().pathOpen = false;
  if (pathWritten_) content_.append("n\n");
  pathWritten_ = false;
}

void Postscript2Pdf::writeMatrix(const Matrix& matrix) {
  std::string text;
  appendMatrix(text, matrix, "cm");
  content_.append(text);
}

}  // namespace quillpress
