#include "postscript/level3/colour/ProfileBytes.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quillpress::level3 {

namespace {

constexpr double kVersion = 2.1;

struct TextDeleter {
  void operator()(cmsMLU* text) const { cmsMLUfree(text); }
};

}  // namespace

void describe(const Profile& profile, const char* description) {
  cmsSetProfileVersion(profile.get(), kVersion);
  const std::unique_ptr<cmsMLU, TextDeleter> text(required(cmsMLUalloc(nullptr, 1)));
  cmsMLUsetASCII(text.get(), "en", "US", description);
  cmsWriteTag(profile.get(), cmsSigProfileDescriptionTag, text.get());
  cmsMLUsetASCII(text.get(), "en", "US", "none");
  cmsWriteTag(profile.get(), cmsSigCopyrightTag, text.get());
}

std::string bytesOf(const Profile& profile) {
  // The first of January 2000, in place of the time of day.
  constexpr std::array<char, 12> kDate{0x07, static_cast<char>(0xD0), 0, 1, 0, 1, 0, 0, 0, 0, 0, 0};
  constexpr std::ptrdiff_t kDateOffset = 24;
  cmsUInt32Number size = 0;
  required(cmsSaveProfileToMem(profile.get(), nullptr, &size));
  std::string bytes(size, '\0');
  required(cmsSaveProfileToMem(profile.get(), bytes.data(), &size));
  std::copy(kDate.begin(), kDate.end(), bytes.begin() + kDateOffset);
  return bytes;
}

}  // namespace quillpress::level3
