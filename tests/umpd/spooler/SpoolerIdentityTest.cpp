// Whose identity a job has while it writes into the system's folder: on Windows NT 4.0 the spooler's.

#include <algorithm>
#include <array>
#include <vector>

#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

using Steps = std::vector<std::string>;

std::wstring fileName(HMODULE module) {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring_view text = path.data();
  return std::wstring(text.substr(text.find_last_of(L'\\') + 1));
}

std::wstring systemMessage(DWORD error) {
  std::array<wchar_t, 1024> text{};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text.data(),
                 static_cast<DWORD>(text.size()), nullptr);
  return text.data();
}

class SpoolerIdentityTest : public SpoolerTest {
 protected:
  SpoolerIdentityTest() {
    library.replace("CreateFileW",
                    [this](LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                           DWORD creation, DWORD flags, HANDLE templateFile) -> HANDLE {
                      if (std::wstring_view(path).ends_with(L"\\twscfg.1")) {
                        steps.push_back("write");
                        configurationFile_ = path;
                      }
                      return ::CreateFileW(path, access, sharing, security, creation, flags, templateFile);
                    });
    library.replace("FreeLibrary", [this](HMODULE module) -> BOOL {
      if (_wcsicmp(fileName(module).c_str(), L"spoolss.dll") == 0) steps.push_back("unload");
      return ::FreeLibrary(module);
    });
    byName.replace("RevertToPrinterSelf", [this]() -> HANDLE {
      steps.push_back("revert");
      return token;
    });
    byName.replace("ImpersonatePrinterClient", [this](HANDLE given) -> BOOL {
      steps.push_back("impersonate");
      given_ = given;
      return TRUE;
    });
  }
  ~SpoolerIdentityTest() override {
    if (!configurationFile_.empty()) DeleteFileW(configurationFile_.c_str());
  }

  void begin() {
    const Job job(library, printer.name());
    EXPECT_NE(job.handle(), 0U);
  }

  [[nodiscard]] bool isAsked(const std::string& function) const {
    const auto& asked = byName.functionsAsked();
    return std::find(asked.begin(), asked.end(), function) != asked.end();
  }

  void expectSystemBox(const wchar_t* caption, DWORD error) {
    const Box box = boxes.takeOne();
    EXPECT_EQ(box.caption, caption);
    EXPECT_EQ(box.text, systemMessage(error));
    EXPECT_TRUE(box.wide);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  }

  HANDLE token = reinterpret_cast<HANDLE>(0x5EED);
  HANDLE given_ = nullptr;
  Steps steps;

 private:
  std::wstring configurationFile_;
};

TEST_F(SpoolerIdentityTest, OnNt4IsTheSpoolersWhileTheConfigurationIsWritten) {
  pretend(library, kWindowsNt4);
  begin();
  EXPECT_EQ(steps, (Steps{"revert", "write", "impersonate", "unload"}));
}

TEST_F(SpoolerIdentityTest, TheClientComesBackByTheTokenOfTheRevert) {
  pretend(library, kWindowsNt4);
  begin();
  EXPECT_EQ(given_, token);
}

TEST_F(SpoolerIdentityTest, WithoutATokenNobodyIsImpersonated) {
  pretend(library, kWindowsNt4);
  token = nullptr;
  begin();
  EXPECT_EQ(steps, (Steps{"revert", "write", "unload"}));
}

TEST_F(SpoolerIdentityTest, WithoutTheLibraryABoxIsShownAndTheJobGoesOn) {
  pretend(library, kWindowsNt4);
  byName.makeMissing(L"spoolss.dll");
  begin();
  expectSystemBox(L"LoadLibrary spoolss.dll", ERROR_MOD_NOT_FOUND);
  EXPECT_EQ(steps, Steps{"write"});
}

TEST_F(SpoolerIdentityTest, WithoutTheFunctionABoxIsShownAndTheJobGoesOn) {
  pretend(library, kWindowsNt4);
  byName.makeAbsent("RevertToPrinterSelf");
  begin();
  expectSystemBox(L"GetProcAddress RevertToPrinterSelf", ERROR_PROC_NOT_FOUND);
  EXPECT_EQ(steps, (Steps{"unload", "write"}));
}

TEST_F(SpoolerIdentityTest, WithoutTheWayBackTheLibraryIsUnloadedAllTheSame) {
  pretend(library, kWindowsNt4);
  byName.makeAbsent("ImpersonatePrinterClient");
  begin();
  EXPECT_EQ(steps, (Steps{"revert", "write", "unload"}));
}

TEST_F(SpoolerIdentityTest, ComesBackWhenTheConfigurationCannotBeWritten) {
  pretend(library, kWindowsNt4);
  library.replace("CreateFileW",
                  [this](LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                         DWORD creation, DWORD flags, HANDLE templateFile) -> HANDLE {
                    if (!std::wstring_view(path).ends_with(L"\\twscfg.1")) {
                      return ::CreateFileW(path, access, sharing, security, creation, flags, templateFile);
                    }
                    steps.push_back("write");
                    SetLastError(ERROR_ACCESS_DENIED);
                    return INVALID_HANDLE_VALUE;
                  });
  begin();
  expectSystemBox(L"copyNameValuesToPrinterDriverConfigFile failed", ERROR_ACCESS_DENIED);
  EXPECT_EQ(steps, (Steps{"revert", "write", "impersonate", "unload"}));
}

TEST_F(SpoolerIdentityTest, IsTheClientsWhenTheDriverTellsTheDocument) {
  pretend(library, kWindowsNt4);
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(steps.empty());
}

TEST_F(SpoolerIdentityTest, IsTheClientsOnTheReleasesWithoutThatFile) {
  for (const WindowsRelease& release : kEveryWindows) {
    if (release.isNt4()) continue;
    pretend(library, release);
    begin();
    EXPECT_TRUE(steps.empty()) << release;
    EXPECT_FALSE(isAsked("RevertToPrinterSelf")) << release;
  }
}

}  // namespace
}  // namespace quillpress::harness
