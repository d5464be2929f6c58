#pragma once

#include <array>
#include <span>
#include <type_traits>
#include <utility>

#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/operators/GeneratedOps.h"

namespace quillpress {

namespace generated {

// Pops an operand of a kind.
template <typename T>
Ref<PostscriptObject> popOperand(Interpreter& interpreter) {
  if constexpr (std::is_same_v<T, PostscriptObject>) {
    return interpreter.operandStack().pop();
  } else if constexpr (std::is_same_v<T, IntegerObject>) {
    return interpreter.popIntegerObject();
  } else if constexpr (std::is_same_v<T, BooleanObject>) {
    return interpreter.popBooleanObject();
  } else if constexpr (std::is_same_v<T, ArrayObject>) {
    return interpreter.popArrayObject();
  } else if constexpr (std::is_same_v<T, StringObject>) {
    return interpreter.popStringObject();
  } else if constexpr (std::is_same_v<T, DictionaryObject>) {
    return interpreter.popDictionaryObject();
  } else {
    static_assert(std::is_same_v<T, MarkObject>);
    return interpreter.popMarkObject();
  }
}

// Makes the default object of a result.
template <typename T>
struct Result {
  using Object = T;
  static Ref<T> make(Interpreter& /*interpreter*/) { return quillpress::make<T>(); }
};
template <>
struct Result<IntegerObject> {
  using Object = IntegerObject;
  static Ref<IntegerObject> make(Interpreter& /*interpreter*/) { return quillpress::make<IntegerObject>(0); }
};
template <>
struct Result<RealObject> {
  using Object = RealObject;
  static Ref<RealObject> make(Interpreter& /*interpreter*/) { return quillpress::make<RealObject>(0.0); }
};
template <>
struct Result<BooleanObject> {
  using Object = BooleanObject;
  static Ref<BooleanObject> make(Interpreter& /*interpreter*/) {
    return quillpress::make<BooleanObject>(false);
  }
};
template <>
struct Result<TrueObject> {
  using Object = BooleanObject;
  static Ref<BooleanObject> make(Interpreter& /*interpreter*/) {
    return quillpress::make<BooleanObject>(true);
  }
};
template <>
struct Result<NameObject> {
  using Object = NameObject;
  static Ref<NameObject> make(Interpreter& /*interpreter*/) {
    auto name = quillpress::make<NameObject>("");
    name->executable = false;
    return name;
  }
};
template <>
struct Result<StringObject> {
  using Object = StringObject;
  static Ref<StringObject> make(Interpreter& interpreter) { return interpreter.memory().newString({}); }
};
template <>
struct Result<ArrayObject> {
  using Object = ArrayObject;
  static Ref<ArrayObject> make(Interpreter& interpreter) { return interpreter.memory().newArray(); }
};
template <>
struct Result<DictionaryObject> {
  using Object = DictionaryObject;
  static Ref<DictionaryObject> make(Interpreter& interpreter) { return interpreter.memory().newDictionary(); }
};
template <>
struct Result<FileObject> {
  using Object = FileObject;
  // No file stands behind it: a filtered file over an empty string, which nobody can read.
  static Ref<FileObject> make(Interpreter& interpreter) {
    MemorySet& memory = interpreter.memory();
    return memory.newFilteredFile(memory.newString({}), "", 0);
  }
};

template <typename T>
Ref<PostscriptObject> makeResult(Interpreter& interpreter) {
  return Result<T>::make(interpreter);
}

// How the object for a parameter of an operation comes about: one of the two is null.
struct Source {
  Ref<PostscriptObject> (*pop)(Interpreter& interpreter);
  Ref<PostscriptObject> (*make)(Interpreter& interpreter);
};

template <typename Parameter>
struct Description;
template <typename T>
struct Description<In<T>> {
  using Object = T;
  static constexpr Source kSource{popOperand<T>, nullptr};
};
template <typename T>
struct Description<Out<T>> {
  using Object = typename Result<T>::Object;
  static constexpr Source kSource{nullptr, makeResult<T>};
};

// Pops the operands, the last one first, and pushes the results, the first one first. `held` keeps all of
// them for the time of the call.
void takeAndPush(Interpreter& interpreter, std::span<const Source> sources,
                 std::span<Ref<PostscriptObject>> held);

// Turns an operation's parameter list into the steps of its operator, once for all operations with these
// parameters.
template <typename Operation>
struct Steps;

template <typename... Parameters>
struct Steps<void (GeneratedOps::*)(Parameters...)> {
  using Operation = void (GeneratedOps::*)(Parameters...);

  [[gnu::noinline]] static void run(Interpreter& interpreter, Operation operation) {
    static constexpr std::array<Source, sizeof...(Parameters)> kSources{Description<Parameters>::kSource...};
    std::array<Ref<PostscriptObject>, sizeof...(Parameters)> held;
    takeAndPush(interpreter, kSources, held);
    call(interpreter.generatedOps(), operation, held.data(), std::index_sequence_for<Parameters...>());
  }

 private:
  template <std::size_t... kIndices>
  static void call(GeneratedOps& operations, Operation operation, Ref<PostscriptObject>* held,
                   std::index_sequence<kIndices...> /*unused*/) {
    (operations.*operation)({static_cast<typename Description<Parameters>::Object&>(*held[kIndices])}...);
  }
};

}  // namespace generated

#define GENERATED_OP(identifier, className, operatorName, parameters)                                     \
  class className##GeneratedOp final : public NameObject {                                                \
   public:                                                                                                \
    className##GeneratedOp() : NameObject(operatorName) {}                                                \
    void execute(Interpreter& interpreter) override {                                                     \
      generated::Steps<decltype(&GeneratedOps::identifier)>::run(interpreter, &GeneratedOps::identifier); \
    }                                                                                                     \
  };
#include "postscript/lib/operators/GeneratedOps.def"
#undef GENERATED_OP

}  // namespace quillpress
