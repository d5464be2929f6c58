#include "postscript/lib/objects/TypeCode.h"

#include <array>
#include <cstddef>

namespace quillpress {

namespace {

struct TypeNames {
  std::string_view debug;
  std::string_view operatorName;
};

// In the order of the codes. Some kinds have no object here; their names are part of the table all the
// same.
constexpr std::array<TypeNames, 15> kTypeNames{{
    {"ps_boolean", "booleantype"},
    {"ps_fontID", "fonttype"},
    {"ps_integer", "integertype"},
    {"ps_mark", "marktype"},
    {"ps_name", "nametype"},
    {"ps_null", "nulltype"},
    {"ps_operator", "operatortype"},
    {"ps_real", "realtype"},
    {"ps_array", "arraytype"},
    {"ps_dictionary", "dicttype"},
    {"ps_file", "filetype"},
    {"ps_gstate", "gstatetype"},
    {"ps_packedarray", "packedarraytype"},
    {"ps_save", "savetype"},
    {"ps_string", "stringtype"},
}};

constexpr TypeNames kUnknown{"unknown", "unknown"};

const TypeNames& namesOf(int code) {
  const auto index = static_cast<std::size_t>(code);
  return code >= 0 && index < kTypeNames.size() ? kTypeNames[index] : kUnknown;
}

}  // namespace

std::string_view typeName(int code) {
  return namesOf(code).debug;
}

std::string_view typeOperatorName(int code) {
  return namesOf(code).operatorName;
}

}  // namespace quillpress
