#include "umpd/win32/SecurityAttributes.h"

#include "umpd/win32/Windows.h"
// Needs the header above.
#include <sddl.h>

#include "umpd/win32/DriverDebugOutput.h"
#include "umpd/win32/ErrorBox.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

// Mandatory label, low level, no write-up.
// A browser in protected mode prints at the low level and may not open what has no label, which counts as
// medium.
constexpr char kLowIntegrity[] = "S:(ML;;NW;;;LW)";

}  // namespace

SecurityAttributes::SecurityAttributes() {
  const WindowsVersion version = windowsVersion();
  // The 9x family has no security, and its functions for descriptors only fail.
  if (version.is9x()) return;
  usable_ = openToEverybody();
  if (!usable_) return;
  if (version.hasIntegrityLabels()) allowLowIntegrity();
  // Not inheritable: a program that is started gets no handles of this process.
  attributes_ = {sizeof attributes_, &descriptor_, FALSE};
}

bool SecurityAttributes::openToEverybody() {
  if (InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION) == 0) {
    showSystemErrorBox(L"InitializeSecurityDescriptor failed");
    return false;
  }
  // A list that is present and null lets everybody in; an absent one would be the creator's default.
  if (SetSecurityDescriptorDacl(&descriptor_, TRUE, nullptr, FALSE) == 0) {
    showSystemErrorBox(L"SetSecurityDescriptorDacl failed");
    return false;
  }
  return true;
}

void SecurityAttributes::allowLowIntegrity() {
  // Parsed by the system: the functions that make a label are missing before Vista, where the library must
  // still load.
  if (ConvertStringSecurityDescriptorToSecurityDescriptorA(kLowIntegrity, SDDL_REVISION_1, label_.receive(),
                                                           nullptr) == 0) {
    writeDriverDebugOutput("ConvertStringSecurityDescriptorToSecurityDescriptor failed\n");
    return;
  }
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  ACL* list = nullptr;
  if (GetSecurityDescriptorSacl(label_.get(), &present, &list, &defaulted) == 0) {
    writeDriverDebugOutput("GetSecurityDescriptorSacl failed\n");
    return;
  }
  if (SetSecurityDescriptorSacl(&descriptor_, present, list, defaulted) == 0) {
    writeDriverDebugOutput("SetSecurityDescriptorSacl failed\n");
  }
}

}  // namespace quillpress::driver
