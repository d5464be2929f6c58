#include "tests/umpd/harness/Driver.h"

#include <utility>

namespace quillpress::harness {
namespace {

template <class Function>
void find(const Library& library, const char* name, Function*& function) {
  function = library.find<Function>(name);
}

}  // namespace

Driver::Driver(const Library& library) {
  find(library, "DocStart", docStart);
  find(library, "DocStart2K", docStart2K);
  find(library, "DocWrite", docWrite);
  find(library, "DocEnd", docEnd);
  find(library, "getIntVal", getIntVal);
  find(library, "getStringVal", getStringVal);
  find(library, "getStringMultibyte", getStringMultibyte);
}

Job::Job(const Library& library, std::wstring printerName)
    : driver_(library), handle_(driver_.docStart(printerName.data())) {}

Job::Job(const Library& library, const Printer& printer, std::wstring documentName, unsigned long id)
    : driver_(library),
      handle_(driver_.docStart2K(printer.handle(), id, std::wstring(printer.name()).data(),
                                 documentName.data())) {}

Job::~Job() {
  if (handle_ != 0) end();
}

int Job::write(std::string_view bytes) const {
  return driver_.docWrite(handle_, bytes.data(), static_cast<unsigned long>(bytes.size()));
}

int Job::end() {
  return driver_.docEnd(std::exchange(handle_, 0));
}

int Job::number(const std::wstring& name, int defaultValue) const {
  return driver_.getIntVal(handle_, name.c_str(), defaultValue);
}

std::wstring Job::text(const std::wstring& name, const std::wstring& defaultValue) const {
  constexpr unsigned kLength = 65536;
  std::wstring buffer(kLength, L'\0');
  driver_.getStringVal(handle_, name.c_str(), buffer.data(), kLength, defaultValue.c_str());
  return buffer.c_str();
}

}  // namespace quillpress::harness
