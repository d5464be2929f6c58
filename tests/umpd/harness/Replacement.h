#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace quillpress::harness {

// What stands in for a function of Windows, as long as this object lives.
class Replacement {
 public:
  virtual ~Replacement() = default;
  [[nodiscard]] virtual void* address() const = 0;
};

// A plain function, of any calling convention.
class FunctionReplacement final : public Replacement {
 public:
  explicit FunctionReplacement(void* function) : function_(function) {}
  [[nodiscard]] void* address() const override { return function_; }

 private:
  void* function_;
};

// A lambda that holds what it needs: Windows calls the static `call`, which finds the lambda by its type.
template <class Lambda, class Operator = decltype(&Lambda::operator())>
class LambdaReplacement;

template <class Lambda, class Result, class... Arguments>
class LambdaReplacement<Lambda, Result (Lambda::*)(Arguments...) const> final : public Replacement {
 public:
  explicit LambdaReplacement(Lambda lambda) : lambda_(std::move(lambda)) {
    if (target != nullptr) ADD_FAILURE() << "one lambda cannot stand for two functions at once";
    target = &lambda_;
  }
  ~LambdaReplacement() override { target = nullptr; }

  [[nodiscard]] void* address() const override { return reinterpret_cast<void*>(&call); }

 private:
  static Result WINAPI call(Arguments... arguments) { return (*target)(arguments...); }

  static inline const Lambda* target = nullptr;
  Lambda lambda_;
};

template <class Function>
std::unique_ptr<Replacement> makeReplacement(Function function) {
  if constexpr (std::is_pointer_v<Function>) {
    return std::make_unique<FunctionReplacement>(reinterpret_cast<void*>(function));
  } else {
    return std::make_unique<LambdaReplacement<Function>>(std::move(function));
  }
}

// What stands in for a function that fails, with the function's own signature. Each `tag` makes a type of its
// own: one lambda cannot stand for two functions.
template <class Result, class... Arguments, class Value, class Tag>
auto failing(Result(WINAPI* /*function*/)(Arguments...), Value result, DWORD error, Tag /*tag*/) {
  return [=](Arguments...) -> Result {
    SetLastError(error);
    return result;
  };
}

}  // namespace quillpress::harness

// Has every call of a function of Windows give `result` and leave `error`. `owner`: whose imports it is.
#define FAIL_EVERY(owner, function, result, error) \
  (owner).replace(#function, ::quillpress::harness::failing(&::function, result, error, [] {}))
