#include "launcher/support/ObjectSecurity.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillpress::harness {
namespace {

// From Windows Vista on; the headers for Windows 2000 lack them.
constexpr SECURITY_INFORMATION kLabelInformation = 0x10;
constexpr BYTE kMandatoryLabelAce = 0x11;

std::vector<BYTE> descriptorOf(HANDLE object, SECURITY_INFORMATION information) {
  DWORD size = 0;
  GetKernelObjectSecurity(object, information, nullptr, 0, &size);
  std::vector<BYTE> descriptor(size);
  EXPECT_TRUE(GetKernelObjectSecurity(object, information, descriptor.data(), size, &size))
      << "error " << GetLastError();
  return descriptor;
}

}  // namespace

ObjectSecurity securityOf(HANDLE object) {
  ObjectSecurity security;
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  ACL* list = nullptr;

  std::vector<BYTE> descriptor = descriptorOf(object, DACL_SECURITY_INFORMATION);
  EXPECT_TRUE(GetSecurityDescriptorDacl(descriptor.data(), &present, &list, &defaulted));
  security.hasList = present != FALSE;
  security.isListNull = security.hasList && list == nullptr;

  descriptor = descriptorOf(object, kLabelInformation);
  list = nullptr;
  EXPECT_TRUE(GetSecurityDescriptorSacl(descriptor.data(), &present, &list, &defaulted));
  if (present == FALSE || list == nullptr) return security;
  for (DWORD index = 0; index < list->AceCount; ++index) {
    void* found = nullptr;
    GetAce(list, index, &found);
    const auto* ace = static_cast<const ACCESS_ALLOWED_ACE*>(found);
    if (ace->Header.AceType != kMandatoryLabelAce) continue;
    auto* identifier = const_cast<DWORD*>(&ace->SidStart);
    security.label = *GetSidSubAuthority(identifier, 0);
    security.labelPolicy = ace->Mask;
  }
  return security;
}

}  // namespace quillpress::harness
