#include <unordered_set>
#include <vector>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// The procedures that are still to be bound, in a list of their own: depth costs nothing.
class Binding {
 public:
  explicit Binding(Interpreter& interpreter) : interpreter_(interpreter) {}

  void run(const Object& procedure) {
    pending_.push_back(procedure);
    while (!pending_.empty()) {
      const Object next = pending_.back();
      pending_.pop_back();
      bindElements(next);
    }
  }

 private:
  void bindElements(const Object& procedure) {
    for (std::uint32_t i = 0; i < procedure.length(); ++i) {
      const Object element = procedure.elements()[i];
      if (element.isName() && element.isExecutable()) {
        const Object* const value = interpreter_.dictionaries().find(element.asName());
        if (value != nullptr && value->is(Type::kOperator)) set(procedure, i, *value);
      } else if (element.is(Type::kPackedArray) && element.isExecutable()) {
        // Packed ones are read-only from the start; each is looked at once.
        if (seen_.insert(element.elements()).second) pending_.push_back(element);
      } else if (element.isProcedure() && element.isWritable()) {
        // Read-only from here on, and so not bound twice: one that contains itself comes to an end.
        set(procedure, i, element.withAccess(Access::kReadOnly));
        pending_.push_back(element);
      }
    }
  }

  void set(const Object& procedure, std::uint32_t index, const Object& value) {
    interpreter_.memory().willChange(*procedure.arrayStorage());
    procedure.elements()[index] = value;
  }

  Interpreter& interpreter_;
  std::vector<Object> pending_;
  std::unordered_set<const Object*> seen_;
};

// proc -> proc
void bind(Interpreter& interpreter) {
  const Object procedure = interpreter.operands().top();
  if (procedure.is(Type::kArray) && !procedure.isWritable()) return;
  Binding(interpreter).run(procedure);
}

constexpr OperatorRow kBindOperator[] = {{"bind", "array", bind}};

}  // namespace

void addBindOperator(Interpreter& interpreter) {
  interpreter.addOperators(kBindOperator);
}

}  // namespace quillpress::level3
