#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/streams/FileStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// %stdin and its like, or null.
Object standardFile(const Interpreter& interpreter, std::string_view name) {
  if (name == "%stdin") return interpreter.standardInput();
  if (name == "%stdout") return interpreter.standardOutput();
  if (name == "%stderr") return interpreter.standardErrors();
  return Object::null();
}

// "%os%name" is the name in the machine's file system.
std::filesystem::path pathOf(std::string_view name) {
  constexpr std::string_view kDevice = "%os%";
  if (name.starts_with(kDevice)) name.remove_prefix(kDevice.size());
  return std::filesystem::path(std::string(name));
}

Object openNamed(Interpreter& interpreter, std::string_view name) {
  if (name.empty() || (name.starts_with('%') && !name.starts_with("%os%"))) {
    raise(ErrorName::kUndefinedFilename);
  }
  if (name.find('\0') != std::string_view::npos) raise(ErrorName::kUndefinedFilename);
  const std::filesystem::path path = pathOf(name);
  std::error_code error;
  if (!std::filesystem::exists(path, error)) raise(ErrorName::kUndefinedFilename);
  if (!interpreter.fileAccess().mayRead(path)) raise(ErrorName::kInvalidFileAccess);
  if (!std::filesystem::is_regular_file(path, error)) raise(ErrorName::kInvalidFileAccess);
  FileHandle file = openFile(path, "rb");
  if (file == nullptr) raise(ErrorName::kInvalidFileAccess);
  return interpreter.newFile(std::make_shared<FileSource>(std::move(file))).withAccess(Access::kReadOnly);
}

bool isAccess(std::string_view mode) {
  constexpr std::string_view kModes[] = {"r", "w", "a", "r+", "w+", "a+"};
  return std::find(std::begin(kModes), std::end(kModes), mode) != std::end(kModes);
}

// filename access -> file
void file(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  requireReadable(operands.top(1));
  requireReadable(operands.top(0));
  const std::string_view name = textOf(operands.top(1));
  const std::string_view mode = textOf(operands.top(0));
  if (!isAccess(mode)) raise(ErrorName::kInvalidFileAccess);
  Object opened = standardFile(interpreter, name);
  if (opened.isNull()) {
    // Nothing on the machine is written.
    if (mode != "r") raise(ErrorName::kInvalidFileAccess);
    opened = openNamed(interpreter, name);
  } else if (fileOf(opened).isReadable() != (mode == "r")) {
    raise(ErrorName::kInvalidFileAccess);
  }
  operands.pop();
  operands.top() = opened;
}

// file ->
void closefile(Interpreter& interpreter) {
  File& file = fileOf(interpreter.operands().top());
  // The standard files are everybody's: the job lets go of them, no more.
  if (!file.isClosed() && !file.close()) raise(ErrorName::kIoError);
  interpreter.operands().pop();
}

// file -> bool
// filename -> pages bytes referenced created true
// filename -> false
void status(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (operands.top().isFile()) {
    operands.top() = Object::boolean(!fileOf(operands.top()).isClosed());
    return;
  }
  requireReadable(operands.top());
  const std::string_view name = textOf(operands.top());
  std::error_code error;
  const std::filesystem::path path = pathOf(name);
  if (name.find('\0') != std::string_view::npos || !interpreter.fileAccess().mayRead(path) ||
      !std::filesystem::is_regular_file(path, error)) {
    operands.top() = Object::boolean(false);
    return;
  }
  operands.require(4);
  constexpr std::int64_t kPage = 1024;
  const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path, error));
  const auto written = std::filesystem::last_write_time(path, error).time_since_epoch();
  const std::int64_t seconds = std::chrono::duration_cast<std::chrono::seconds>(written).count();
  operands.top() = Object::integer((bytes + kPage - 1) / kPage);
  operands.push(Object::integer(bytes));
  operands.push(Object::integer(seconds));
  operands.push(Object::integer(seconds));
  operands.push(Object::boolean(true));
}

// filename ->
void run(Interpreter& interpreter) {
  requireReadable(interpreter.operands().top());
  const Object opened = openNamed(interpreter, textOf(interpreter.operands().top()));
  interpreter.execution().push(opened.asExecutable());
  interpreter.operands().pop();
}

// -> file
void currentfile(Interpreter& interpreter) {
  Object current = interpreter.currentFile();
  if (current.isNull()) {
    const auto nothing = std::make_shared<MemorySource>(Bytes());
    nothing->close();
    current = interpreter.newFile(nothing);
  }
  interpreter.operands().push(current);
}

// file -> int
void fileposition(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const File& file = fileOf(operand);
  // What a job can write has no place: standard files and filters.
  if (file.isClosed() || !file.isReadable() || !file.source().canSeek()) raise(ErrorName::kIoError);
  const std::uint64_t position = file.source().position();
  operand = Object::integer(static_cast<std::int64_t>(position));
}

// file int ->
void setfileposition(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const File& file = fileOf(operands.top(1));
  const std::int64_t position = operands.top(0).asInteger();
  if (position < 0) raise(ErrorName::kRangeCheck);
  const bool isDone =
      !file.isClosed() && file.isReadable() && file.source().seek(static_cast<std::uint64_t>(position));
  if (!isDone) raise(ErrorName::kIoError);
  operands.pop(2);
}

// filename ->
void deletefile(Interpreter& interpreter) {
  requireReadable(interpreter.operands().top());
  raise(ErrorName::kInvalidFileAccess);
}

// old new ->
void renamefile(Interpreter& interpreter) {
  requireReadable(interpreter.operands().top(1));
  requireReadable(interpreter.operands().top(0));
  raise(ErrorName::kInvalidFileAccess);
}

constexpr OperatorRow kFileOperators[] = {
    {"file", "string string", file},
    {"closefile", "file", closefile},
    {"status", "file|string", status},
    {"run", "string", run},
    {"currentfile", "", currentfile},
    {"fileposition", "file", fileposition},
    {"setfileposition", "file int", setfileposition},
    {"deletefile", "string", deletefile},
    {"renamefile", "string string", renamefile},
};

}  // namespace

void addFileOperators(Interpreter& interpreter) {
  interpreter.addOperators(kFileOperators);
}

}  // namespace quillpress::level3
