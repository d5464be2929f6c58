#include "cli/quick/WholeProgram.h"

#include <dlfcn.h>

#include <string>

#include "cli/base/ExitCode.h"
#include "cli/base/Messages.h"
#include "cli/whole/Entry.h"

namespace quillpress::cli {

namespace {

// The one of this very version, where the linker finds the program's other libraries.
constexpr const char* kLibrary = "libquillpress-command.so." QUILLPRESS_VERSION;

int sayWhyNot() {
  say(std::string("the rest of the program is missing: ") + dlerror());
  return static_cast<int>(ExitCode::kConversion);
}

}  // namespace

int runWholeProgram(int argc, const char* const* argv) {
  // Never closed: the process ends with it.
  void* const library = dlopen(kLibrary, RTLD_NOW);
  if (library == nullptr) return sayWhyNot();
  void* const entry = dlsym(library, kWholeProgramEntry);
  if (entry == nullptr) return sayWhyNot();
  return reinterpret_cast<WholeProgramEntry>(entry)(argc, argv);
}

}  // namespace quillpress::cli
