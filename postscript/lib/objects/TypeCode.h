#pragma once

#include <string_view>

namespace quillpress {

// The kinds of objects. The numbers are a contract: both name tables are indexed by them.
enum class TypeCode : int {
  kBoolean = 0,
  kFontId = 1,
  kInteger = 2,
  kMark = 3,
  kName = 4,
  kNull = 5,
  kOperator = 6,
  kReal = 7,
  kArray = 8,
  kDictionary = 9,
  kFile = 10,
  kGraphicsState = 11,
  kPackedArray = 12,
  kSave = 13,
  kString = 14,
};

// The name that messages and debugging texts use ("ps_integer"); "unknown" for any other code.
std::string_view typeName(int code);
inline std::string_view typeName(TypeCode code) {
  return typeName(static_cast<int>(code));
}

// The name that the `type` operator gives ("integertype"); "unknown" for any other code.
std::string_view typeOperatorName(int code);
inline std::string_view typeOperatorName(TypeCode code) {
  return typeOperatorName(static_cast<int>(code));
}

}  // namespace quillpress
