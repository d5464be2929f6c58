#pragma once

#include <array>
#include <string_view>

#include "postscript/lib/objects/PostscriptObject.h"

namespace quillpress {

class ArrayObject;
class BooleanObject;
class DictionaryObject;
class FileObject;
class IntegerObject;
class MarkObject;
class NameObject;
class NullObject;
class RealObject;
class StringObject;

// Kinds that only the generated table speaks of: an operand that is popped as it comes, and a boolean
// result whose default is true.
using AnyObject = PostscriptObject;
class TrueObject;

// A popped operand of a generated operation, borrowed for the time of the call.
template <typename T>
struct In {
  T& object;
};

// A result of a generated operation, already pushed with its default value; the operation may change it.
template <typename T>
struct Out {
  T& object;
};
template <>
struct Out<TrueObject> {
  BooleanObject& object;
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-parameter"  // the operands' names document the operations

// One operation for every operator name of the language, in the order of the table. The operations here
// do nothing: an operator that nobody implements takes its operands and leaves default results.
class GeneratedOps {
 public:
  GeneratedOps() = default;
  GeneratedOps(const GeneratedOps&) = delete;
  GeneratedOps& operator=(const GeneratedOps&) = delete;
  virtual ~GeneratedOps() = default;

#define GENERATED_OP(identifier, className, operatorName, parameters) \
  virtual void identifier parameters {}
#include "postscript/lib/operators/GeneratedOps.def"
#undef GENERATED_OP
};

#pragma GCC diagnostic pop

// The names of the generated operators, in operation order.
inline constexpr auto kGeneratedNames = std::to_array<std::string_view>({
#define GENERATED_OP(identifier, className, operatorName, parameters) operatorName,
#include "postscript/lib/operators/GeneratedOps.def"
#undef GENERATED_OP
});
static_assert(kGeneratedNames.size() == 316);

}  // namespace quillpress
