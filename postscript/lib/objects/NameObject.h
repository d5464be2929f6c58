#pragma once

#include <string_view>

#include "postscript/lib/objects/DictionaryKey.h"
#include "postscript/lib/objects/Ref.h"

namespace quillpress {

struct KnownName;

// A name; also the base of every operator, which is a name that does something when it is executed.
// The text may hold any byte and may be empty.
class NameObject : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kName;

  // Made executable, as a name that the program writes bare.
  explicit NameObject(std::string_view nameText)
      : PostscriptObject(kTypeCode), text(nameText), hash_(hashOf(text)) {}
  explicit NameObject(char character) : NameObject(std::string_view(&character, 1)) {}

  // Looks the name up through the dictionary stack and schedules the value itself, not a copy. A
  // procedure is made executable and rewound first. Throws Ex when the name is not defined.
  void execute(Interpreter& interpreter) override;

  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] std::string cvsString() const override;

  // A plain name with the same text. Kept: so the clone of an operator looks itself up again when it
  // runs. The clone of a name keeps the name's flag, the clone of an operator is executable (stack/dup.ps).
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  [[nodiscard]] DictionaryKey key() const { return {text, hash_}; }

  // What the interpreter knows about the text; null until the name has been executed, and in operators.
  // So a name may be executed by one interpreter only.
  [[nodiscard]] KnownName* known() const { return known_; }

  const std::string text;

 private:
  const std::uint32_t hash_;
  KnownName* known_ = nullptr;
};

}  // namespace quillpress
