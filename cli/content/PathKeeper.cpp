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
    if (waiting_.empty()) {
      passMarks();
    } else {
      passStep();
    }
  }
  if (waiting_.empty()) begun_ = openPathBefore(text_.size());
  return output_;
}

/** The written path that nothing has ended before offset `end`. */
std::string PathKeeper::openPathBefore(std::size_t end) const {
  OpenPath path = openPathOf(text_.substr(floor_, end - floor_));
  if (!path.begins) path.text.insert(0, begun_);
  if (path.text.size() > kLongestPath) return {};
  return std::move(path.text);
}

void PathKeeper::copyTo(std::size_t end) {
  output_.append(text_, at_, end - at_);
  at_ = end;
}

void PathKeeper::writeWaiting() {
  if (!output_.empty() && !isWhite(output_.back())) output_ += '\n';
  output_.append(waiting_);
  waiting_.clear();
}

std::string PathKeeper::takeSaved() {
  if (saved_.empty()) return {};
  std::string path = std::move(saved_.back());
  saved_.pop_back();
  return path;
}

/** Copies up to `end`, and ends a path there that is written and must not go on. */
void PathKeeper::takePathBack(const std::string& path, std::size_t end) {
  copyTo(end);
  if (!path.empty()) output_.append("n\n");
}

/** From here on the written path is `begun` and what follows. */
void PathKeeper::beginAgainAt(std::size_t position, std::string begun) {
  floor_ = position;
  begun_ = std::move(begun);
}

/** Passes text while no path is waiting: up to the operator that makes one wait, or to the end. */
void PathKeeper::passMarks() {
  ContentScanner scanner(text_, at_);
  for (ContentMark mark{}; waiting_.empty() && scanner.next(text_.size(), mark);) {
    if (mark.kind == ContentMark::Kind::Object) continue;
    std::string path = openPathBefore(mark.begin);
    if (mark.kind == ContentMark::Kind::Save) {
      takePathBack(path, mark.begin);
      saved_.push_back(path);
      waiting_ = std::move(path);
    } else if (mark.kind == ContentMark::Kind::Restore) {
      takePathBack(path, mark.begin);
      waiting_ = takeSaved();
    } else if (mark.kind == ContentMark::Kind::Concat) {
      takePathBack(path, matrixBegin(text_, mark.begin));
      waiting_ = pathUnder(path, matrixBefore(text_, mark.begin));
    }
    copyTo(mark.end);
    beginAgainAt(mark.end, {});
  }
  if (waiting_.empty()) copyTo(text_.size());
}

/** Passes one operator while a path is waiting. */
void PathKeeper::passStep() {
  std::string_view rest = text_.substr(at_);
  const ContentStep step = takeStep(rest);
  const std::size_t end = text_.size() - rest.size();
  if (step.name == "m") {  // a path of its own: the job has given the old one up
    waiting_.clear();
    beginAgainAt(at_, {});
    return;
  }
  if (buildsPath(step.name)) {
    beginAgainAt(at_, waiting_);
    writeWaiting();
    return;
  }
  if (step.name == "n") {
    waiting_.clear();
  } else if (endsPath(step.name) || clips(step.name)) {
    writeWaiting();
  } else if (step.name == "q") {
    saved_.push_back(waiting_);
  } else if (step.name == "Q") {
    waiting_ = takeSaved();
  } else if (step.name == "cm") {
    waiting_ = pathUnder(waiting_, matrixBefore(text_, end - step.name.size()));
  } else if (step.name == "re") {  // a rectangular clip, which has nothing to do with the path
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
