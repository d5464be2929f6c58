#include "cli/quick/WholeProgram.h"

#include <dlfcn.h>
#include <link.h>

#include <string>

#include "cli/base/ExitCode.h"
#include "cli/base/Messages.h"
#include "cli/whole/Entry.h"

namespace quillpress::cli {

namespace {

// As the build names them.
constexpr const char* kEngine = QUILLPRESS_ENGINE_FILE;
constexpr const char* kLibrary = QUILLPRESS_COMMAND_FILE;

// Beside the engine that the loader has found for this program, whichever way it did: with a name alone it
// would search for whoever is in front of dlopen, such as a sanitizer.
std::string libraryPath() {
  void* const engine = dlopen(kEngine, RTLD_LAZY | RTLD_NOLOAD);
  if (engine == nullptr) return kLibrary;
  const link_map* map = nullptr;
  const bool isFound = dlinfo(engine, RTLD_DI_LINKMAP, &map) == 0;
  const std::string path = isFound ? map->l_name : "";
  dlclose(engine);
  return path.substr(0, path.rfind('/') + 1) + kLibrary;
}

int sayWhyNot() {
  say(std::string("the rest of the program is missing: ") + dlerror());
  return static_cast<int>(ExitCode::kConversion);
}

}  // namespace

int runWholeProgram(int argc, const char* const* argv) {
  // Never closed: the process ends with it.
  void* const library = dlopen(libraryPath().c_str(), RTLD_NOW);
  if (library == nullptr) return sayWhyNot();
  void* const entry = dlsym(library, kWholeProgramEntry);
  if (entry == nullptr) return sayWhyNot();
  return reinterpret_cast<WholeProgramEntry>(entry)(argc, argv);
}

}  // namespace quillpress::cli
