#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

enum class ObjectKind { kMutex, kEvent, kSection };

std::ostream& operator<<(std::ostream& out, ObjectKind kind);

// The security attributes that an object is made with, read while they live.
struct Attributes {
  DWORD length = 0;
  BOOL isInherited = FALSE;
  bool hasList = false;     // a discretionary list is present
  bool isListNull = false;  // and lets everybody do everything
  bool hasSystemList = false;
  std::optional<DWORD> label;  // the integrity level
  DWORD labelPolicy = 0;

  bool operator==(const Attributes&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Attributes& attributes);

// What the library asks Windows for by name. Every call is made for real, unless it is refused.
class KernelCalls {
 public:
  struct Creation {
    ObjectKind kind;
    std::wstring name;
    std::optional<Attributes> attributes;  // none: a null pointer
    bool isOwned = false;                  // a mutex
    bool isManual = false;                 // an event
    bool isSignalled = false;
    HANDLE file = nullptr;  // a section
    DWORD protection = 0;
    ULONGLONG size = 0;
  };

  struct Opening {
    ObjectKind kind;
    std::wstring name;
    DWORD access;
    BOOL isInherited;
  };

  explicit KernelCalls(Library& library);
  KernelCalls(const KernelCalls&) = delete;
  KernelCalls& operator=(const KernelCalls&) = delete;

  [[nodiscard]] const std::vector<Creation>& creations() const { return creations_; }
  [[nodiscard]] std::vector<Creation> creationsOf(const std::wstring& name) const;
  [[nodiscard]] std::vector<Opening> openingsOf(const std::wstring& name) const;

  // Creations and openings for which these answer true fail with "access denied".
  std::function<bool(const std::wstring& name)> refuseCreation;
  std::function<bool(const std::wstring& name)> refuseOpening;

 private:
  bool noteCreation(const Creation& creation);
  bool noteOpening(const Opening& opening);

  std::vector<Creation> creations_;
  std::vector<Opening> openings_;
};

}  // namespace quillpress::harness
