#include "cli/job/Envelope.h"

#include <algorithm>

#include "cli/base/Errors.h"
#include "cli/base/TextScan.h"
#include "cli/job/InputKind.h"

namespace quillpress::cli {

namespace {

constexpr std::string_view kUniversalExit = "\x1B%-12345X";
constexpr std::string_view kPjl = "@PJL";
constexpr char kControlD = '\x04';
constexpr char kEscape = '\x1B';
// A control-D with this much white space behind it is no end of a job.
constexpr std::ptrdiff_t kLongestTail = 4096;
// Lines of printer job language are short; of a longer one the rest is passed over without being kept.
constexpr std::size_t kLongestLine = 4096;
// As many bytes as it takes to say what a file is instead of PostScript.
constexpr std::size_t kSignatureLength = 16;

// Whether `part` may grow into `whole`.
bool isBeginOf(std::string_view part, std::string_view whole) {
  return part.size() < whole.size() && whole.starts_with(part);
}

bool isFiller(char byte) {
  return isWhite(byte) || byte == kControlD;
}

// A value and not a function, so that the search through the whole job is compiled around it.
constexpr auto kIsEnvelopeByte = [](char byte) { return byte == kControlD || byte == kEscape; };

// Where the job ends among some bytes of it; behind their last byte when nothing says that it does.
struct Ending {
  std::size_t at;
  bool isCertain;  // a universal exit has been seen, else what follows may still turn out to be one
};

// A universal exit ends the job. A control-D does too, but only when nothing except envelope follows it,
// since binary data may hold one; so it is a possible end as long as only filler stands behind it.
Ending findEnding(std::string_view bytes) {
  auto at = std::find_if(bytes.begin(), bytes.end(), kIsEnvelopeByte);
  while (at != bytes.end()) {
    const auto behind = std::find_if_not(at, bytes.end(), isFiller);
    const std::string_view rest(behind, bytes.end());
    const auto place = static_cast<std::size_t>(at - bytes.begin());
    // An exit is nine bytes that no program holds by chance.
    if (rest.starts_with(kUniversalExit)) return {place, true};
    if (isBeginOf(rest, kUniversalExit) && behind - at <= kLongestTail) return {place, false};
    at = std::find_if(std::max(behind, at + 1), bytes.end(), kIsEnvelopeByte);
  }
  return {bytes.size(), false};
}

// Throws when a line of printer job language hands the job to another interpreter than PostScript's.
void checkLanguage(std::string_view line) {
  const std::string text = lowered(line);
  // Anything is allowed around the words, as printers are generous here.
  const std::size_t equals = text.find('=');
  if (text.find("enter") == std::string::npos || text.find("language") == std::string::npos) return;
  if (equals == std::string::npos) return;
  const std::string_view language = trimmed(std::string_view(text).substr(equals + 1));
  // AUTO leaves the choice to the printer, which looks for %! as we do.
  if (language.starts_with("postscript") || language.starts_with("auto")) return;
  throw InputError("is a print job, but not in PostScript: its printer language is " +
                   std::string(trimmed(line.substr(equals + 1))));
}

}  // namespace

void Envelope::write(std::string_view bytes, std::uint64_t offset) {
  if (place_ == Place::kInside) return passInside(bytes, offset);
  if (held_.empty()) heldOffset_ = offset;
  held_.append(bytes);
  if (place_ == Place::kBefore) {
    passBefore();
  } else {
    passAfter();
  }
}

void Envelope::finish() {
  ended_ = true;
  if (place_ == Place::kBefore) passBefore();
  if (place_ == Place::kBefore) throw InputError("holds no PostScript job");
  if (place_ == Place::kInside) closeJob();
  if (place_ == Place::kAfter) passAfter();
  next_.finish();
}

void Envelope::passBefore() {
  if (takeEnvelope() == Found::kJob) openJob();
}

// Takes the envelope off the front of the held bytes, as far as it can be judged, and tells what stands
// there.
Envelope::Found Envelope::takeEnvelope() {
  std::string_view text = held_;
  Found found = takePiece(text);
  while (found == Found::kEnvelope) found = takePiece(text);
  // All at once, since a block may hold thousands of short lines.
  heldOffset_ += held_.size() - text.size();
  held_.erase(0, held_.size() - text.size());
  return found;
}

// Takes one piece of envelope off the front of `text`.
Envelope::Found Envelope::takePiece(std::string_view& text) {
  if (isInLongLine_ && !takeLongLine(text)) return Found::kNeedMore;
  std::size_t length = 0;
  while (length < text.size() && isFiller(text[length])) ++length;
  if (length == 0 && text.starts_with(kUniversalExit)) length = kUniversalExit.size();
  if (length == 0 && text.starts_with(kPjl)) {
    const std::size_t lineEnd = text.find('\n');
    const bool isOpen = lineEnd == std::string_view::npos;
    if (isOpen && !ended_ && text.size() < kLongestLine) return Found::kNeedMore;
    length = std::min(lineEnd, text.size() - 1) + 1;
    checkLanguage(text.substr(0, std::min(length, kLongestLine)));
    isInLongLine_ = isOpen;
  }
  text.remove_prefix(length);
  if (length > 0) return Found::kEnvelope;
  if (text.empty()) return Found::kNeedMore;
  return text.size() < kSignatureLength && !ended_ ? Found::kNeedMore : Found::kJob;
}

// Drops more of a line whose start has been judged; tells whether its end has come.
bool Envelope::takeLongLine(std::string_view& text) {
  const std::size_t lineEnd = text.find('\n');
  isInLongLine_ = lineEnd == std::string_view::npos;
  text.remove_prefix(isInLongLine_ ? text.size() : lineEnd + 1);
  return !isInLongLine_;
}

void Envelope::openJob() {
  // Printers look for the same two bytes before they trust a job.
  if (!held_.starts_with("%!")) throw InputError("is not PostScript: " + describeInput(held_));
  place_ = Place::kInside;
  const std::string start = std::move(held_);
  held_.clear();
  passInside(start, heldOffset_);
}

void Envelope::passInside(std::string_view bytes, std::uint64_t offset) {
  std::string joined;
  // The bytes held back are judged again together with those that have come.
  if (!held_.empty()) {
    joined = std::move(held_);
    held_.clear();
    joined.append(bytes);
    bytes = joined;
    offset = heldOffset_;
  }
  const Ending ending = findEnding(bytes);
  if (ending.at > 0) next_.write(bytes.substr(0, ending.at), offset);
  held_ = bytes.substr(ending.at);
  heldOffset_ = offset + ending.at;
  if (!ending.isCertain) return;
  place_ = Place::kAfter;
  passAfter();
}

void Envelope::passAfter() {
  // That there is one is all that is told; it may be as long as it likes.
  if (moreJobsFollow_) {
    held_.clear();
  } else {
    moreJobsFollow_ = takeEnvelope() == Found::kJob;
  }
}

void Envelope::release() {
  const std::string text = std::move(held_);
  held_.clear();
  next_.write(text, heldOffset_);
}

// The file has ended: of the held bytes a control-D goes, the start of a universal exit was none.
void Envelope::closeJob() {
  if (held_.find(kEscape) != std::string::npos) release();
  held_.clear();
  place_ = Place::kAfter;
}

}  // namespace quillpress::cli
