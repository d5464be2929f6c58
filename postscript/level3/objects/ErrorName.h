#pragma once

#include <cstdint>
#include <string_view>

namespace quillpress::level3 {

// The errors of the language, in the order in which errordict is filled.
enum class ErrorName : std::uint8_t {
  kConfigurationError,
  kDictFull,
  kDictStackOverflow,
  kDictStackUnderflow,
  kExecStackOverflow,
  kHandleError,
  kInterrupt,
  kInvalidAccess,
  kInvalidExit,
  kInvalidFileAccess,
  kInvalidFont,
  kInvalidRestore,
  kIoError,
  kLimitCheck,
  kNoCurrentPoint,
  kRangeCheck,
  kStackOverflow,
  kStackUnderflow,
  kSyntaxError,
  kTimeout,
  kTypeCheck,
  kUndefined,
  kUndefinedFilename,
  kUndefinedResource,
  kUndefinedResult,
  kUnmatchedMark,
  kUnregistered,
  kVmError,
};

inline constexpr std::size_t kErrorNameCount = static_cast<std::size_t>(ErrorName::kVmError) + 1;

struct Name;

std::string_view textOf(ErrorName name);

// Thrown by whatever finds an error; caught in the run loop alone, which enters errordict. An error is rare
// beside the operators that succeed, and those pay nothing for an exception that is not thrown.
struct PostscriptError {
  ErrorName name;
  // What the error is said to be in, when that is not the object that was executed: an immediate name.
  Name* command = nullptr;
};

[[noreturn]] void raise(ErrorName name);

}  // namespace quillpress::level3
