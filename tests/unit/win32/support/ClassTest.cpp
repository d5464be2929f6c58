#include "tests/unit/win32/support/ClassTest.h"

#include <utility>

#include "tests/umpd/harness/Text.h"

namespace quillpress::classes {
namespace {

constexpr UINT kBoxStyle = MB_OK | MB_SERVICE_NOTIFICATION;

void expectOwnerlessBox(HWND owner, UINT style) {
  EXPECT_EQ(owner, nullptr);
  EXPECT_EQ(style, kBoxStyle);
}

}  // namespace

ClassTest::ClassTest() {
  imports.replace("MessageBoxA", [this](HWND owner, LPCSTR text, LPCSTR caption, UINT style) -> int {
    expectOwnerlessBox(owner, style);
    boxes_.push_back(L"[" + harness::widen(caption) + L"] " + harness::widen(text));
    return IDOK;
  });
  imports.replace("MessageBoxW", [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) -> int {
    expectOwnerlessBox(owner, style);
    boxes_.push_back(std::wstring(L"[") + caption + L"] " + text);
    return IDOK;
  });
  imports.replace("OutputDebugStringA", [this](LPCSTR text) { debuggerOutput_ += harness::widen(text); });
  imports.replace("OutputDebugStringW", [this](LPCWSTR text) { debuggerOutput_ += text; });
}

ClassTest::~ClassTest() {
  for (const std::wstring& box : boxes_) ADD_FAILURE() << "an unexpected box: " << harness::narrow(box);
}

std::vector<std::wstring> ClassTest::takeBoxes() {
  return std::exchange(boxes_, {});
}

std::wstring ClassTest::takeDebuggerOutput() {
  return std::exchange(debuggerOutput_, {});
}

void ClassTest::pretend(const harness::WindowsRelease& release) {
  auto* const ask = real<decltype(GetVersionExA)>(L"kernel32.dll", "GetVersionExA");
  imports.replace("GetVersionExA", [release, ask](LPOSVERSIONINFOA version) -> BOOL {
    if (ask(version) == FALSE) return FALSE;
    version->dwPlatformId = release.platform;
    version->dwMajorVersion = release.major;
    version->dwMinorVersion = release.minor;
    return TRUE;
  });
}

std::wstring newObjectName() {
  static int count = 0;
  return L"QuillpressClasses." + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count);
}

}  // namespace quillpress::classes
