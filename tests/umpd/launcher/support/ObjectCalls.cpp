#include "tests/umpd/launcher/support/ObjectCalls.h"

namespace quillpress::harness {

ObjectCalls::ObjectCalls(Library& library) {
  library.replace("OpenMutexW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    note("OpenMutexW", name);
    return ::OpenMutexW(access, inherit, name);
  });
  library.replace("OpenEventW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    note("OpenEventW", name);
    return ::OpenEventW(access, inherit, name);
  });
  library.replace(
      "CreateEventW",
      [this](LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL signalled, LPCWSTR name) -> HANDLE {
        note("CreateEventW", name, security != nullptr);
        return ::CreateEventW(security, manual, signalled, name);
      });
  library.replace("OpenFileMappingW", [this](DWORD access, BOOL inherit, LPCWSTR name) -> HANDLE {
    note("OpenFileMappingW", name);
    return ::OpenFileMappingW(access, inherit, name);
  });
  library.replace("CreateFileMappingW",
                  [this](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high, DWORD low,
                         LPCWSTR name) -> HANDLE {
                    note("CreateFileMappingW", name, security != nullptr);
                    return ::CreateFileMappingW(file, security, protection, high, low, name);
                  });
}

std::vector<std::wstring> ObjectCalls::namesFor(const std::string& function) const {
  std::vector<std::wstring> names;
  for (const Call& call : calls_) {
    if (call.function == function) names.push_back(call.name);
  }
  return names;
}

void ObjectCalls::note(const char* function, const wchar_t* name, bool hasSecurity) {
  const std::wstring text = name == nullptr ? L"" : name;
  if (text.find(L"twssend") != std::wstring::npos) calls_.push_back({function, text, hasSecurity});
}

}  // namespace quillpress::harness
