#include "cli/run/RunProgram.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/system/Paths.h"
#include "postscript/level3/document/Machine.h"
#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/streams/FileStreams.h"

namespace quillpress::cli {

namespace {

using level3::FileSink;
using level3::FileSource;
using level3::Interpreter;

// What a program finds when it looks at its page: A4, in points.
constexpr double kPageWidth = 595;
constexpr double kPageHeight = 842;

level3::SourcePointer openProgram(const std::string& path) {
  if (path == "-") return std::make_shared<FileSource>(level3::borrowFile(stdin));
  std::error_code error;
  if (std::filesystem::is_directory(pathOf(path), error)) throw InputError("is a directory, not a program");
  level3::FileHandle file = level3::openFile(pathOf(path), "rb");
  if (file == nullptr) throw InputError("cannot be opened: " + systemReason());
  return std::make_shared<FileSource>(std::move(file));
}

void applyLimits(Interpreter& interpreter, const Options& options) {
  for (const std::string& folder : options.readableFolders) interpreter.fileAccess().allow(pathOf(folder));
  if (options.maxMemory) interpreter.memory().setLimit(*options.maxMemory);
  if (options.timeout) {
    const std::chrono::duration<double> time(*options.timeout);
    interpreter.setDeadline(std::chrono::steady_clock::now() +
                            std::chrono::duration_cast<std::chrono::steady_clock::duration>(time));
  }
}

ExitCode exitOf(const Interpreter::Outcome& outcome, const Options& options) {
  switch (outcome.kind) {
    case Interpreter::Outcome::Kind::kDone:
    case Interpreter::Outcome::Kind::kQuit:
    case Interpreter::Outcome::Kind::kStopped:
      return ExitCode::kDone;
    case Interpreter::Outcome::Kind::kAborted:
      say(jobName(options.job) + ": ended by " + outcome.errorName);
      return ExitCode::kConversion;
    case Interpreter::Outcome::Kind::kError:
      return ExitCode::kConversion;
  }
  return ExitCode::kConversion;
}

}  // namespace

ExitCode interpretProgram(const Options& options) {
  const level3::SourcePointer program = openProgram(options.job);
  const auto output = std::make_shared<FileSink>(level3::borrowFile(stdout));
  const auto errors = std::make_shared<FileSink>(level3::borrowFile(stderr));
  level3::NoOutput noPages;
  level3::Machine machine(noPages, {std::make_shared<FileSource>(level3::borrowFile(stdin)), output, errors},
                          kPageWidth, kPageHeight);
  Interpreter& interpreter = machine.interpreter();
  applyLimits(interpreter, options);
  const Interpreter::Outcome outcome = interpreter.run(program);
  errors->flush();
  if (!output->flush() && !output->isClosed()) throw OutputError("cannot be written: " + systemReason());
  return exitOf(outcome, options);
}

}  // namespace quillpress::cli
