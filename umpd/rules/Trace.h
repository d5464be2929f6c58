#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

// The diagnostic trace of the driver side: QUILLPRESS_TRACE(format, argument...) in the manner of printf. %s
// is a wide text, %d an integer, a flag or a handle, %x the same in hexadecimal; the compiler checks that
// each argument fits. Silent unless the build option QUILLPRESS_TRACE_DRIVER is on, and then the arguments
// are not evaluated.
#define QUILLPRESS_TRACE(...)                                                             \
  do {                                                                                    \
    if constexpr (quillpress::driver::kIsTraceOn) quillpress::driver::trace(__VA_ARGS__); \
  } while (false)

namespace quillpress::driver {
#ifdef QUILLPRESS_TRACE_DRIVER
inline constexpr bool kIsTraceOn = true;
#else
inline constexpr bool kIsTraceOn = false;
#endif

// One argument: a text or a number.
class TraceArgument {
 public:
  template <typename Type>
  static constexpr bool kIsText = std::convertible_to<const Type&, std::wstring_view>;
  template <typename Type>
  static constexpr bool kIsNumber = std::integral<Type> || std::is_pointer_v<Type>;

  template <typename Type>
  explicit TraceArgument(const Type& value) {
    if constexpr (std::is_same_v<std::decay_t<Type>, wchar_t*> ||
                  std::is_same_v<std::decay_t<Type>, const wchar_t*>) {
      const wchar_t* const text = value;
      text_ = text == nullptr ? L"(null)" : text;
    } else if constexpr (kIsText<Type>) {
      text_ = value;
    } else if constexpr (std::is_pointer_v<Type>) {
      number_ = static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(value));
    } else {
      number_ = static_cast<std::int64_t>(value);
    }
  }

  [[nodiscard]] std::wstring_view text() const { return text_; }
  [[nodiscard]] std::int64_t number() const { return number_; }

 private:
  std::wstring_view text_;
  std::int64_t number_ = 0;
};

// A format that has been held against the types of its arguments.
template <typename... Types>
class TraceFormat {
 public:
  consteval TraceFormat(const wchar_t* format) : text_(format) {  // NOLINT(google-explicit-constructor)
    std::wstring_view rest = text_;
    (check<Types>(rest), ...);
    // Reached only by a format that asks for more arguments than there are.
    if (rest.find(L'%') != std::wstring_view::npos) throw "a conversion has no argument";
  }

  [[nodiscard]] std::wstring_view text() const { return text_; }

 private:
  template <typename Type>
  static consteval void check(std::wstring_view& rest) {
    const std::size_t percent = rest.find(L'%');
    if (percent == std::wstring_view::npos) throw "an argument has no conversion";
    const wchar_t conversion = rest.at(percent + 1);
    rest.remove_prefix(percent + 2);
    const bool fits = conversion == L's'
                          ? TraceArgument::kIsText<Type>
                          : (conversion == L'd' || conversion == L'x') && TraceArgument::kIsNumber<Type>;
    if (!fits) throw "an argument does not fit its conversion";
  }

  std::wstring_view text_;
};

// The text with its conversions filled in.
std::wstring traceText(std::wstring_view format, std::initializer_list<TraceArgument> arguments);

// Writes the text to the debugger.
void writeTrace(const std::wstring& text);

template <typename... Types>
void trace(TraceFormat<std::type_identity_t<std::decay_t<Types>>...> format, const Types&... arguments) {
  writeTrace(traceText(format.text(), {TraceArgument(arguments)...}));
}
}  // namespace quillpress::driver
