#include "umpd/api/JobTable.h"

#include <cstdint>
#include <map>
#include <utility>

#include "postscript/lib/base/Guarded.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
namespace {
struct Jobs {
  CriticalSection section;
  std::map<JobHandle, std::unique_ptr<UmDriver>> byHandle;
};

// Never destroyed: jobs that a process leaves behind at its end must not wait for anything then. A host that
// unloads the library in the middle of a job keeps the job's handles open until it ends.
Jobs& jobs() {
  static Jobs& living = *new Jobs;
  return living;
}
}  // namespace

JobHandle JobTable::add(std::unique_ptr<UmDriver> job) {
  // Callers get the object's address, which no living job shares. It is never followed: see find.
  static_assert(sizeof(JobHandle) == sizeof(void*));
  const auto handle = static_cast<JobHandle>(reinterpret_cast<std::uintptr_t>(job.get()));
  const CriticalSection::Lock lock(jobs().section);
  jobs().byHandle.emplace(handle, std::move(job));
  return handle;
}

UmDriver* JobTable::find(JobHandle handle) {
  const CriticalSection::Lock lock(jobs().section);
  const auto found = jobs().byHandle.find(handle);
  return found != jobs().byHandle.end() && found->second->hasSignature() ? found->second.get() : nullptr;
}

std::unique_ptr<UmDriver> JobTable::remove(JobHandle handle) {
  const CriticalSection::Lock lock(jobs().section);
  const auto found = jobs().byHandle.find(handle);
  // Kept: an object that does not say that it is a job is not touched, and so never goes
  // (SpoolerInterfaceTest.AJobWithASpoiledSignatureIsLeftAlone).
  if (found == jobs().byHandle.end() || !found->second->hasSignature()) return nullptr;
  std::unique_ptr<UmDriver> job = std::move(found->second);
  jobs().byHandle.erase(found);
  return job;
}

UmDriver* validJob(JobHandle handle, const char* messageIfInvalid) {
  UmDriver* const job = JobTable::find(handle);
  if (job != nullptr && (job->stateFlags() & UmDriver::kInitialised) != 0) return job;
  showErrorBox("%s", messageIfInvalid);
  return nullptr;
}

bool writeBlock(UmDriver& job, const void* bytes, unsigned long count) {
  // A file with a hole in it is worse than one that ends early, so nothing is written behind a block that was
  // lost.
  if ((job.stateFlags() & UmDriver::kWriteFailed) != 0) return false;
  const bool isWritten = guarded(false, [&] {
    return job.write({static_cast<const std::byte*>(bytes), count});
  });
  if (!isWritten) job.setStateFlag(UmDriver::kWriteFailed);
  return isWritten;
}
}  // namespace quillpress::driver
