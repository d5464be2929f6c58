#pragma once

#include <lcms2.h>

#include <memory>
#include <new>
#include <string>

namespace quillpress::level3 {

struct ProfileDeleter {
  void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, ProfileDeleter>;

// What Little CMS has made; it makes nothing when memory ends. Throws std::bad_alloc then.
template <typename T>
T required(T made) {
  if (!made) throw std::bad_alloc();
  return made;
}

// Gives a new profile its version, the latest that all programs and PDF/A-1 take, and a description.
void describe(const Profile& profile, const char* description);

// The profile as a file, always the same for the same profile.
std::string bytesOf(const Profile& profile);

}  // namespace quillpress::level3
