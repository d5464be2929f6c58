#include <exception>
#include <new>
#include <string>
#include <vector>

#include "cli/Program.h"
#include "cli/base/Messages.h"
#include "cli/base/Options.h"
#include "cli/system/Paths.h"
#include "cli/system/StandardStreams.h"

namespace {

using quillpress::cli::ExitCode;

ExitCode run(int argc, const char* const* argv) {
  if (!quillpress::cli::prepareStreams()) return ExitCode::kOutput;
  ExitCode exit = ExitCode::kDone;
  const std::vector<std::string> arguments = quillpress::cli::programArguments(argc, argv);
  std::vector<const char*> texts;
  texts.reserve(arguments.size());
  for (const std::string& argument : arguments) texts.push_back(argument.c_str());
  const auto options = quillpress::cli::parseOptions(static_cast<int>(texts.size()), texts.data(), exit);
  return options ? quillpress::cli::runProgram(*options) : exit;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return static_cast<int>(run(argc, argv));
  } catch (const std::bad_alloc&) {
    quillpress::cli::say("out of memory");
  } catch (const std::exception& error) {
    quillpress::cli::say(error.what());
  }
  return static_cast<int>(ExitCode::kConversion);
}
