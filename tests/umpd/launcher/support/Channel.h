#pragma once

#include <string>

namespace quillpress::harness {

// The names of one user's channel between the library and the launcher.
struct Channel {
  std::wstring base;

  [[nodiscard]] std::wstring requestEvent() const { return base + L"_event"; }
  [[nodiscard]] std::wstring acknowledgeEvent() const { return base + L"_event_end"; }
  [[nodiscard]] std::wstring mutex() const { return base + L"_mutex"; }
  [[nodiscard]] std::wstring memory() const { return base + L"_sm"; }
};

inline Channel channelOf(const std::wstring& userName, bool hasNamespaces = true) {
  return {std::wstring(hasNamespaces ? L"Local\\" : L"") + L"twssend_" + userName};
}

}  // namespace quillpress::harness
