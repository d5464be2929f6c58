#include "tests/umpd/launcher/support/ObjectSecurity.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace quillpress::harness {
namespace {

// From Windows Vista on; the headers for Windows 2000 lack them.
constexpr SECURITY_INFORMATION kLabelInformation = 0x10;
constexpr BYTE kMandatoryLabelAce = 0x11;
constexpr BYTE kMandatoryLabelAuthority = 16;

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
  if (present == FALSE || list == nullptr || list->AceCount == 0) return security;
  EXPECT_EQ(list->AceCount, 1);
  void* first = nullptr;
  EXPECT_TRUE(GetAce(list, 0, &first));
  ACCESS_ALLOWED_ACE entry{};  // the label's entry has the same shape
  std::memcpy(&entry, first, sizeof entry);
  EXPECT_EQ(entry.Header.AceType, kMandatoryLabelAce);
  EXPECT_EQ(entry.Header.AceFlags, 0);
  PSID sid = static_cast<BYTE*>(first) + offsetof(ACCESS_ALLOWED_ACE, SidStart);
  EXPECT_EQ(GetSidIdentifierAuthority(sid)->Value[5], kMandatoryLabelAuthority);
  security.label = *GetSidSubAuthority(sid, 0);
  security.labelPolicy = entry.Mask;
  return security;
}

}  // namespace quillpress::harness
