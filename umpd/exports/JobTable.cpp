#include "umpd/exports/JobTable.h"

#include <cstdint>
#include <map>
#include <utility>

#include "umpd/win32/CriticalSection.h"

namespace quillpress {
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
  auto node = jobs().byHandle.extract(handle);
  return node ? std::move(node.mapped()) : nullptr;
}

}  // namespace quillpress
