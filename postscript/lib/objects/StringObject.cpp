#include "postscript/lib/objects/StringObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/DecodeFilters.h"
#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

namespace {

const std::vector<std::string> kNoFilters;

}  // namespace

const std::vector<std::string>& StringData::decodeFilters() const {
  return encoding_ == nullptr ? kNoFilters : encoding_->filters;
}

void StringData::addDecodeFilter(std::string name) {
  if (encoding_ == nullptr) encoding_ = std::make_unique<Encoding>();
  encoding_->filters.push_back(std::move(name));
}

const std::string& StringData::bytes() const {
  if (encoding_ == nullptr) return contents_;
  if (encoding_->decoded == nullptr) {
    std::string decoded = contents_;
    for (const std::string& filter : encoding_->filters) decoded = decodeWith(filter, decoded);
    encoding_->decoded = std::make_unique<const std::string>(std::move(decoded));
  }
  return *encoding_->decoded;
}

std::string& StringData::writableBytes() {
  // From here on the bytes are what the job makes of them, and the filters would decode them again.
  if (encoding_ != nullptr) {
    contents_ = bytes();
    encoding_.reset();
  }
  return contents_;
}

StringObject::StringObject(VirtualMemoryObject& memoryArea, std::string text)
    : CompositeObject(memoryArea, memoryArea.add<StringData>(std::move(text))) {
  executable = false;
}

// All bytes, unlike cvsString: this text is for people who look for an error.
std::string StringObject::describe() const {
  return PostscriptObject::describe() + " " + bytes();
}

std::string StringObject::printString() const {
  return "(" + cvsString() + ")";
}

std::string StringObject::cvsString() const {
  const std::string& text = bytes();
  return text.substr(0, text.find('\0'));
}

Ref<PostscriptObject> StringObject::clone(int /*argument*/) const {
  return Ref<PostscriptObject>(new StringObject(*this));
}

void StringObject::put(std::ptrdiff_t index, char byte) {
  std::string& text = data().writableBytes();
  const auto size = static_cast<std::ptrdiff_t>(text.size());
  // Kept: one byte past the end is accepted and lost, so cvs takes a text one byte longer than its buffer
  // (conversion/cvs.ps).
  if (index < 0 || index > size) THROW_EX("String index out of range");
  if (index < size) text[static_cast<std::size_t>(index)] = byte;
}

}  // namespace quillpress
