#include "cli/content/PathKeeper.h"

#include <utility>

#include "cli/base/TextScan.h"
#include "cli/content/ContentScanner.h"
#include "cli/content/InlineImage.h"
#include "cli/content/Matrix.h"
#include "cli/content/PathText.h"

namespace quillpress::cli {

namespace {

// A longer path is not kept: memory stays flat, and no job fills and strokes so long a path in two steps.
constexpr std::size_t kLongestPath = std::size_t{1} << 20U;

}  // namespace

std::string_view PathKeeper::rewrite(std::string_view text) {
  text_ = text;
  at_ = 0;
  floor_ = 0;
  output_.clear();
  while (at_ < text_.size()) {
    if (waiting_.isEmpty()) {
      passMarks();
    } else {
      passStep();
    }
  }
  if (waiting_.isEmpty()) begun_ = openPathBefore(text_.size());
  return output_;
}

PathKeeper::KeptPath PathKeeper::keep(std::string operators) {
  if (operators.empty()) return {};
  return {std::make_shared<const std::string>(std::move(operators)), Matrix()};
}

// Drops the path when it cannot stay where it is.
void PathKeeper::KeptPath::concat(const std::optional<Matrix>& matrix) {
  if (isEmpty()) return;
  if (!matrix || !matrix->isInvertible()) {
    operators = nullptr;
  } else {
    change = matrix->then(change);
  }
}

std::string PathKeeper::KeptPath::text() const {
  if (isEmpty()) return {};
  return change == Matrix() ? *operators : pathUnder(*operators, change);
}

// The written path that nothing has ended before offset `end`.
std::string PathKeeper::openPathBefore(std::size_t end) const {
  OpenPath path = openPathOf(text_.substr(floor_, end - floor_));
  // What has come with earlier texts belongs to it.
  if (!path.begins) path.text.insert(0, begun_);
  if (path.text.size() > kLongestPath) return {};
  return std::move(path.text);
}

void PathKeeper::copyTo(std::size_t end) {
  output_.append(text_, at_, end - at_);
  at_ = end;
}

void PathKeeper::writeWaiting() {
  const std::string text = waiting_.text();
  // Operators are told apart by white space only.
  if (!output_.empty() && !isWhite(output_.back())) output_ += '\n';
  output_.append(text);
  waiting_ = {};
}

PathKeeper::KeptPath PathKeeper::takeSaved() {
  // A restore too many gives the state of the page's begin, which has no path.
  if (saved_.empty()) return {};
  KeptPath path = std::move(saved_.back());
  saved_.pop_back();
  return path;
}

// Copies up to `end`, and ends a path there that is written and must not go on.
void PathKeeper::takePathBack(const std::string& path, std::size_t end) {
  copyTo(end);
  // PDF wants a path to be ended before anything else; n paints nothing.
  if (!path.empty()) output_.append("n\n");
}

// From here on the written path is `begun` and what follows.
void PathKeeper::beginAgainAt(std::size_t position, std::string begun) {
  floor_ = position;
  begun_ = std::move(begun);
}

// Passes text while no path is waiting: up to the operator that makes one wait, or to the end.
void PathKeeper::passMarks() {
  ContentScanner scanner(text_, at_);
  for (ContentMark mark{}; waiting_.isEmpty() && scanner.next(text_.size(), mark);) {
    if (mark.kind == ContentMark::Kind::kObject) continue;
    std::string path = openPathBefore(mark.begin);
    if (mark.kind == ContentMark::Kind::kSave) {
      takePathBack(path, mark.begin);
      // One copy serves this level and all below it.
      waiting_ = keep(std::move(path));
      saved_.push_back(waiting_);
    } else if (mark.kind == ContentMark::Kind::kRestore) {
      takePathBack(path, mark.begin);
      waiting_ = takeSaved();
    } else if (mark.kind == ContentMark::Kind::kConcat) {
      takePathBack(path, matrixBegin(text_, mark.begin));
      waiting_ = keep(std::move(path));
      waiting_.concat(matrixBefore(text_, mark.begin));
    }
    copyTo(mark.end);
    beginAgainAt(mark.end, {});
  }
  if (waiting_.isEmpty()) copyTo(text_.size());
}

// Passes one operator while a path is waiting.
void PathKeeper::passStep() {
  std::string_view rest = text_.substr(at_);
  const ContentStep step = takeStep(rest);
  const std::size_t end = text_.size() - rest.size();
  if (step.name == "m") {  // a path of its own: the job has given the old one up
    waiting_ = {};
    beginAgainAt(at_, {});
    return;
  }
  if (buildsPath(step.name)) {
    beginAgainAt(at_, waiting_.text());
    writeWaiting();
    return;
  }
  if (step.name == "n") {
    waiting_ = {};
  } else if (endsPath(step.name) || clips(step.name)) {
    writeWaiting();
  } else if (step.name == "q") {
    saved_.push_back(waiting_);
  } else if (step.name == "Q") {
    waiting_ = takeSaved();
  } else if (step.name == "cm") {
    // The path stays on the page while the space moves under it.
    waiting_.concat(matrixBefore(text_, end - step.name.size()));
  } else if (step.name == "re") {  // a rectangular clip, which has nothing to do with the path
    // Its W and n go with it.
    takeStep(rest);
    takeStep(rest);
  } else if (step.name == "BI") {
    const std::size_t begin = end - step.name.size();
    copyTo(begin + inlineImageLength(text_.substr(begin)));
    return;
  }
  copyTo(text_.size() - rest.size());
  beginAgainAt(at_, {});
}

}  // namespace quillpress::cli
