#include "postscript/lib/pdf/Postscript2Pdf.h"

#include <utility>

#include "postscript/lib/base/DebugOutput.h"
#include "postscript/lib/base/Ex.h"
#include "postscript/lib/pdf/GraphicsOperators.h"

namespace quillpress {

Postscript2Pdf::Postscript2Pdf(const Matrix& defaultMatrix) {
  // Before the operators run for the first time: the start-up texts may need a graphics state.
  startPage(defaultMatrix);
  registerGraphicsOperators(*this);
  interpreter_.loadPrologue();
}

bool Postscript2Pdf::convert(const char* data, int length) {
  ++callNumber_;
  // Also when the last call failed: what it had written before the error is never handed out.
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

void Postscript2Pdf::refuse(std::string message) {
  THROW_EX(std::move(message));
}

void Postscript2Pdf::startPage(const Matrix& defaultMatrix) {
  ++pageNumber_;
  defaultMatrix_ = defaultMatrix;
  inPattern_ = false;
  states_.clear();
  pushFreshState();
}

// A fresh state has the page's matrix, also when grestore ran out of saved ones.
void Postscript2Pdf::pushFreshState() {
  states_.emplace_back().ctm = defaultMatrix_;
}

// A whole copy, the path included: what is set from here on goes with the state.
void Postscript2Pdf::pushStateCopy() {
  states_.push_back(GraphicsState(states_.back()));
}

void Postscript2Pdf::popState() {
  if (states_.empty()) THROW_EX("No graphics states to pop");
  const CurrentPath left = path();
  states_.pop_back();
  if (states_.empty()) pushFreshState();
  path().keepContentOf(left);
}

Postscript2Pdf::PageDrawing Postscript2Pdf::suspendPageDrawing() {
  PageDrawing drawing{states_, std::exchange(savedDepths_, {}), interpreter_.saveLevel(), pageNumber_};
  path().beginApart();
  return drawing;
}

void Postscript2Pdf::resumePageDrawing(PageDrawing drawing) {
  // Saves that the paint procedure left open have no page to restore.
  savedDepths_ = std::move(drawing.savedDepths);
  interpreter_.changeSaveLevel(drawing.saveLevel - interpreter_.saveLevel());
  // The states of a page that has ended must not come back with the pattern that it began.
  if (drawing.pageNumber == pageNumber_) states_ = std::move(drawing.states);
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
  // Each gsave that the job left open since the save wrote its own "q".
  while (states_.size() > depth) {
    content_.append("Q ");
    popState();
  }
}

void Postscript2Pdf::writeMatrix(const Matrix& matrix) {
  std::string text;
  appendMatrix(text, matrix, "cm");
  content_.append(text);
}

}  // namespace quillpress
