#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/Wildcards.h"

namespace quillpress::level3 {

namespace {

// The files directly in the allowed folders whose whole name matches.
std::vector<std::string> matchingFiles(const FileAccess& access, std::string_view pattern) {
  std::vector<std::string> names;
  for (const std::filesystem::path& folder : access.folders()) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = entry->path().string();
      std::error_code ignored;
      if (entry->is_regular_file(ignored) && matchesWildcards(name, pattern)) names.push_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Frame: procedure, scratch string, names that are left, operator.
void turnFiles(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& rest = execution.top(1);
  if (rest.length() == 0) {
    execution.pop(4);
    return;
  }
  const std::string_view name = textOf(*rest.elements());
  const Object scratch = execution.top(2);
  if (name.size() > scratch.length()) raise(ErrorName::kRangeCheck);
  rest = rest.interval(1, rest.length() - 1);
  std::memcpy(scratch.bytes(), name.data(), name.size());
  interpreter.operands().push(scratch.interval(0, static_cast<std::uint32_t>(name.size())));
  execution.push(Object(execution.top(3)));
}

// template procedure scratch ->
void filenameforall(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ObjectStack& execution = interpreter.execution();
  requireReadable(operands.top(2));
  requireWritable(operands.top(0));
  VirtualMemory& memory = interpreter.memory();
  std::vector<Object> names;
  for (const std::string& name : matchingFiles(interpreter.fileAccess(), textOf(operands.top(2)))) {
    names.push_back(memory.newString(std::string_view(name)));
  }
  const Object list = memory.newArray(names);
  execution.require(5);
  execution.push(operands.top(1));
  execution.push(operands.top(0));
  execution.push(list);
  execution.push(interpreter.internal(turnFiles));
  operands.pop(3);
}

constexpr OperatorRow kFileListOperator[] = {{"filenameforall", "string proc string", filenameforall}};

}  // namespace

void addFileListOperator(Interpreter& interpreter) {
  interpreter.addInternal("filenameforall", turnFiles, OperatorKind::kLoop, 4);
  interpreter.addOperators(kFileListOperator);
}

}  // namespace quillpress::level3
