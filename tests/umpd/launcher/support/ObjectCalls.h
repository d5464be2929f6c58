#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// What the library asks Windows for among the named objects of the channel, by the exact names that it gives.
class ObjectCalls {
 public:
  struct Call {
    std::string function;
    std::wstring name;
    bool hasSecurity = false;  // of functions that create

    bool operator==(const Call&) const = default;
  };

  explicit ObjectCalls(Library& library);
  ObjectCalls(const ObjectCalls&) = delete;
  ObjectCalls& operator=(const ObjectCalls&) = delete;

  // Those of one function since the beginning, or since `forget`.
  [[nodiscard]] std::vector<std::wstring> namesFor(const std::string& function) const;
  [[nodiscard]] const std::vector<Call>& all() const { return calls_; }
  void forget() { calls_.clear(); }

 private:
  void note(const char* function, const wchar_t* name, bool hasSecurity = false);

  std::vector<Call> calls_;
};

}  // namespace quillpress::harness
