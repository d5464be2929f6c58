#pragma once

#include <tuple>
#include <utility>

#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/operators/GeneratedOps.h"

namespace quillpress {

namespace generated {

// Pops the object for one parameter of an operation; nothing for a result.
template <typename Parameter>
struct Operand;

template <typename T>
struct Operand<In<T>> {
  using Holder = Ref<T>;
  static Holder pop(Interpreter& interpreter) {
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
};

template <typename T>
struct Operand<Out<T>> {
  using Holder = Ref<PostscriptObject>;
  static Holder pop(Interpreter& /*interpreter*/) { return nullptr; }
};

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

// Turns an operation's parameter list into the steps of its operator.
template <typename Operation>
struct Steps;

template <typename... Parameters>
struct Steps<void (GeneratedOps::*)(Parameters...)> {
  using Operation = void (GeneratedOps::*)(Parameters...);
  using Holders = std::tuple<typename Operand<Parameters>::Holder...>;

  // Once for all operations with these parameters: inlined, it would be there 316 times.
  [[gnu::noinline]] static void run(Interpreter& interpreter, Operation operation) {
    Holders operands;
    popAll(interpreter, operands, std::make_index_sequence<sizeof...(Parameters)>());
    call(interpreter, operation, operands, std::make_index_sequence<sizeof...(Parameters)>());
  }

 private:
  // The last operand is popped first.
  template <std::size_t... kIndices>
  static void popAll(Interpreter& interpreter, Holders& operands,
                     std::index_sequence<kIndices...> /*unused*/) {
    constexpr std::size_t kLast = sizeof...(kIndices) - 1;
    ((std::get<kLast - kIndices>(operands) =
          Operand<std::tuple_element_t<kLast - kIndices, std::tuple<Parameters...>>>::pop(interpreter)),
     ...);
  }

  template <typename T>
  static In<T> pass(Interpreter& /*interpreter*/, Ref<T>& operand, In<T>* /*kind*/) {
    return {*operand};
  }

  // Pushes a result and hands it on; the operand stack holds it.
  template <typename T>
  static Out<T> pass(Interpreter& interpreter, Ref<PostscriptObject>& holder, Out<T>* /*kind*/) {
    auto result = Result<T>::make(interpreter);
    holder = result;
    interpreter.operandStack().push(result);
    return {*result};
  }

  template <std::size_t... kIndices>
  static void call(Interpreter& interpreter, Operation operation, Holders& operands,
                   std::index_sequence<kIndices...> /*unused*/) {
    // Braces, because they keep the order: the first result is pushed first.
    std::tuple<Parameters...> arguments{
        pass(interpreter, std::get<kIndices>(operands), static_cast<Parameters*>(nullptr))...};
    (interpreter.generatedOps().*operation)(std::get<kIndices>(arguments)...);
  }
};

template <>
struct Steps<void (GeneratedOps::*)()> {
  static void run(Interpreter& interpreter, void (GeneratedOps::*operation)()) {
    (interpreter.generatedOps().*operation)();
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
