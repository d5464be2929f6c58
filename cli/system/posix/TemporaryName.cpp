#include "cli/system/TemporaryName.h"

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

#include "cli/system/posix/BlockedSignals.h"

namespace quillpress::cli {

namespace {

constexpr const char* kPattern = "/.quillpress-XXXXXX";
// Names are random, so a second try is already rare.
constexpr int kMostNames = 100;

// What the handler sees. It is changed only while the signals are held back, and holds no std::string, as a
// handler must not meet one that is being moved.
std::array<char, PATH_MAX> guardedPath;
volatile std::sig_atomic_t isGuarded = 0;

void removeGuardedName(int number) {
  if (isGuarded != 0) unlink(guardedPath.data());
  // The handler was installed for one signal; the same one now does what it would have done without us.
  raise(number);
}

// A signal that the caller has chosen to ignore, as nohup does, stays ignored.
void installHandler(int number) {
  struct sigaction present {};
  if (sigaction(number, nullptr, &present) != 0 || present.sa_handler != SIG_DFL) return;
  struct sigaction removing {};
  removing.sa_handler = removeGuardedName;
  removing.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(number, &removing, nullptr);
}

// How the system names the open file behind `descriptor`; the only way to it without special rights.
std::string pathOf(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

// A name that hardly any file has. Whether one does, the link tells, which cannot replace it.
std::string freshName(const std::string& folder) {
  unsigned number = 0;
  static_cast<void>(getentropy(&number, sizeof number));
  std::array<char, 9> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x", number);
  return folder + "/.quillpress-" + digits.data();
}

bool isLinked(const Descriptor& file, const std::string& name) {
  return linkat(AT_FDCWD, pathOf(file.get()).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Not every file system can make nameless files; there the name goes at once.
Descriptor openUnlinked(const std::string& folder) {
  const BlockedSignals quiet;
  std::string name = folder + kPattern;
  Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (file) unlink(name.c_str());
  return file;
}

}  // namespace

TemporaryName::~TemporaryName() {
  if (path_.empty()) return;
  const BlockedSignals quiet;
  unlink(path_.c_str());
  forget();
}

Descriptor TemporaryName::create(const std::string& folder) {
  const BlockedSignals quiet;
  std::string name = folder + kPattern;
  Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (file) guard(name);
  return file;
}

bool TemporaryName::link(const Descriptor& file, const std::string& folder) {
  const BlockedSignals quiet;
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = freshName(folder);
    if (isLinked(file, name)) {
      guard(name);
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

bool TemporaryName::moveTo(const Descriptor& /*file*/, const std::string& target) {
  const BlockedSignals quiet;
  if (std::rename(path_.c_str(), target.c_str()) != 0) return false;
  forget();
  return true;
}

void TemporaryName::guard(const std::string& path) {
  path_ = path;
  if (path.size() >= guardedPath.size()) return;
  std::memcpy(guardedPath.data(), path.c_str(), path.size() + 1);
  isGuarded = 1;
  for (const int number : kEndingSignals) installHandler(number);
}

void TemporaryName::forget() {
  isGuarded = 0;
  path_.clear();
}

Descriptor openNameless(const std::string& folder) {
  return Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
}

bool canLinkNameless() {
  return access("/proc/self/fd", X_OK) == 0;
}

bool linkNameless(const Descriptor& file, const std::string& name) {
  return isLinked(file, name);
}

Descriptor openTemporary(const std::string& folder) {
  Descriptor file = openNameless(folder);
  return file ? std::move(file) : openUnlinked(folder);
}

}  // namespace quillpress::cli
