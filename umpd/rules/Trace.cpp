#include "umpd/rules/Trace.h"

#include <array>
#include <cwchar>

namespace quillpress::driver {
namespace {
// Windows' own integers and handles have 32 bits.
std::wstring hexadecimal(std::int64_t number) {
  std::array<wchar_t, 24> text{};
  std::swprintf(text.data(), text.size(), L"%x", static_cast<unsigned>(number));
  return text.data();
}

std::wstring converted(wchar_t conversion, const TraceArgument& argument) {
  switch (conversion) {
    case L's':
      return std::wstring(argument.text());
    case L'x':
      return hexadecimal(argument.number());
    default:
      return std::to_wstring(argument.number());
  }
}
}  // namespace

// Not the C library's own formatting: what %s means in a wide format differs between systems.
std::wstring traceText(std::wstring_view format, std::initializer_list<TraceArgument> arguments) {
  std::wstring text;
  for (const TraceArgument& argument : arguments) {
    // There is one for each argument: the compiler has held the format against the types.
    const std::size_t percent = format.find(L'%');
    text.append(format.substr(0, percent)).append(converted(format.at(percent + 1), argument));
    format.remove_prefix(percent + 2);
  }
  return text.append(format);
}
}  // namespace quillpress::driver
