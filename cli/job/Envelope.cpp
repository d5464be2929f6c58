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
// As many bytes as it takes to say what a file is instead of PostScript.
constexpr std::size_t kSignatureLength = 16;

/** Whether `part` may grow into `whole`. */
bool isBeginOf(std::string_view part, std::string_view whole) {
  return part.size() < whole.size() && whole.starts_with(part);
}

bool isFiller(char byte) {
  return isWhite(byte) || byte == kControlD;
}

/** A value and not a function, so that the search through the whole job is compiled around it. */
constexpr auto kIsEnvelopeByte = [](char byte) { return byte == kControlD || byte == kEscape; };

/** Where the job ends among some bytes of it; behind their last byte when nothing says that it does. */
struct Ending {
  std::size_t at;
  bool isCertain;  // a universal exit has been seen, else what follows may still turn out to be one
};

/**
 * A universal exit ends the job. A control-D does too, but only when nothing except envelope follows it,
 * since binary data may hold one; so it is a possible end as long as only filler stands behind it.
 */
Ending findEnding(std::string_view bytes) {
  auto at = std::find_if(bytes.begin(), bytes.end(), kIsEnvelopeByte);
  while (at != bytes.end()) {
    const auto behind = std::find_if_not(at, bytes.end(), isFiller);
    const std::string_view rest(behind, bytes.end());
    const auto place = static_cast<std::size_t>(at - bytes.begin());
    if (rest.starts_with(kUniversalExit)) return {place, true};
    if (isBeginOf(rest, kUniversalExit) && behind - at <= kLongestTail) return {place, false};
    at = std::find_if(std::max(behind, at + 1), bytes.end(), kIsEnvelopeByte);
  }
  return {bytes.size(), false};
}

/** Throws when a line of printer job language hands the job to another interpreter than PostScript's. */
void checkLanguage(std::string_view line) {
  const std::string text = lowered(line);
  const std::size_t equals = text.find('=');
  if (text.find("enter") == std::string::npos || text.find("language") == std::string::npos) return;
  if (equals == std::string::npos) return;
  const std::string_view language = trimmed(std::string_view(text).substr(equals + 1));
  if (language.starts_with("postscript") || language.starts_with("auto")) return;
  throw InputError("is a print job, but not in PostScript: its printer language is " +
                   std::string(trimmed(line.substr(equals + 1))));
}

}  // namespace

void Envelope::write(std::string_view bytes, std::uint64_t offset) {
  if (place_ == Place::Inside) return passInside(bytes, offset);
  if (held_.empty()) heldOffset_ = offset;
  held_.append(bytes);
  place_ == Place::Before ? passBefore() : passAfter();
}

void Envelope::finish() {
  ended_ = true;
  if (place_ == Place::Before) passBefore();
  if (place_ == Place::Before) throw InputError("holds no PostScript job");
  if (place_ == Place::Inside) closeJob();
  if (place_ == Place::After) passAfter();
  next_.finish();
}

void Envelope::passBefore() {
  Found found = takeEnvelope();
  while (found == Found::Envelope) found = takeEnvelope();
  if (found == Found::Job) openJob();
}

/** Takes one piece of envelope off the front of the held bytes, or tells what stands there instead. */
Envelope::Found Envelope::takeEnvelope() {
  const std::string_view text = held_;
  std::size_t length = 0;
  while (length < text.size() && isFiller(text[length])) ++length;
  if (length == 0 && text.starts_with(kUniversalExit)) length = kUniversalExit.size();
  if (length == 0 && text.starts_with(kPjl)) {
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == std::string_view::npos && !ended_) return Found::NeedMore;
    length = std::min(lineEnd, text.size() - 1) + 1;
    checkLanguage(text.substr(0, length));
  }
  if (length > 0) {
    held_.erase(0, length);
    heldOffset_ += length;
    return Found::Envelope;
  }
  if (text.empty()) return Found::NeedMore;
  return text.size() < kSignatureLength && !ended_ ? Found::NeedMore : Found::Job;
}

void Envelope::openJob() {
  if (!held_.starts_with("%!")) throw InputError("is not PostScript: " + describeInput(held_));
  place_ = Place::Inside;
  const std::string start = std::move(held_);
  held_.clear();
  passInside(start, heldOffset_);
}

void Envelope::passInside(std::string_view bytes, std::uint64_t offset) {
  std::string joined;
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
  place_ = Place::After;
  passAfter();
}

void Envelope::passAfter() {
  if (moreJobsFollow_) return held_.clear();
  Found found = takeEnvelope();
  while (found == Found::Envelope) found = takeEnvelope();
  moreJobsFollow_ = found == Found::Job;
}

void Envelope::release() {
  const std::string text = std::move(held_);
  held_.clear();
  next_.write(text, heldOffset_);
}

/** The file has ended: of the held bytes a control-D goes, the start of a universal exit was none. */
void Envelope::closeJob() {
  if (held_.find(kEscape) != std::string::npos) release();
  held_.clear();
  place_ = Place::After;
}

}  // namespace quillpress::cli
