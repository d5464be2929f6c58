#include "cli/Command.h"

#include <exception>
#include <new>
#include <string>
#include <vector>

#include "cli/base/Messages.h"
#include "cli/system/Paths.h"
#include "cli/system/StandardStreams.h"

namespace quillpress::cli {

namespace {

ExitCode parseAndRun(int argc, const char* const* argv, const std::function<ExitCode(const Options&)>& run) {
  if (!prepareStreams()) return ExitCode::kOutput;
  ExitCode exit = ExitCode::kDone;
  const std::vector<std::string> arguments = programArguments(argc, argv);
  std::vector<const char*> texts;
  texts.reserve(arguments.size());
  for (const std::string& argument : arguments) texts.push_back(argument.c_str());
  const auto options = parseOptions(static_cast<int>(texts.size()), texts.data(), exit);
  if (!options) return exit;
  if (options->quiet || options->noWarnings) muteWarnings();
  return run(*options);
}

}  // namespace

int runCommand(int argc, const char* const* argv, const std::function<ExitCode(const Options&)>& run) {
  try {
    return static_cast<int>(parseAndRun(argc, argv, run));
  } catch (const std::bad_alloc&) {
    say("out of memory");
  } catch (const std::exception& error) {
    say(error.what());
  }
  return static_cast<int>(ExitCode::kConversion);
}

}  // namespace quillpress::cli
