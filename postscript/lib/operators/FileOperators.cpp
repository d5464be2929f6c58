#include "postscript/lib/operators/FileOperators.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/HexDigits.h"

namespace quillpress {

namespace {

// The operands of a read from the current file.
struct ReadOperands {
  ReadOperands(Interpreter& interpreter, std::string_view operatorName, const char* wrongFileMessage)
      : buffer(interpreter.operandStack().pop<StringObject>(operatorName)),
        file(interpreter.operandStack().pop<FileObject>(operatorName)) {
    if (!file->isCurrentFile()) THROW_EX(wrongFileMessage);
    interpreter.parser().skipTokenDelimiter();
  }

  // Leaves everything as it was before the call, and waits.
  void suspend(Interpreter& interpreter, PostscriptObject& operatorObject) {
    interpreter.operandStack().push(std::move(file));
    interpreter.operandStack().push(std::move(buffer));
    interpreter.waitForInput(operatorObject);
  }

  // Pushes the filled buffer, as a handle of its own on the same bytes, and true.
  void finish(Interpreter& interpreter) const {
    Ref<PostscriptObject> substring = buffer->clone(0);
    substring->executable = false;
    interpreter.operandStack().push(std::move(substring));
    interpreter.pushBoolean(true);
  }

  Ref<StringObject> buffer;
  Ref<FileObject> file;
};

// A table, because every byte of image data goes through it.
constexpr std::array<std::int8_t, 256> makeHexDigitTable() {
  std::array<std::int8_t, 256> table{};
  for (std::size_t c = 0; c < table.size(); ++c) {
    table[c] = static_cast<std::int8_t>(hexDigitValue(static_cast<char>(c)));
  }
  return table;
}

constexpr auto kHexDigits = makeHexDigitTable();

int hexDigitAt(const char* position) {
  return kHexDigits[static_cast<unsigned char>(*position)];
}

// Decodes as many whole bytes as source and destination allow and moves both pointers. Stops short of
// anything but two digits in a row, which the caller handles one by one.
void decodeHexPairs(const char*& source, const char* sourceEnd, char*& destination,
                    const char* destinationEnd) {
  while (sourceEnd - source >= 2 && destination != destinationEnd) {
    const int byte = hexDigitAt(source) * 16 | hexDigitAt(source + 1);
    if (byte < 0) return;
    *destination++ = static_cast<char>(byte);
    source += 2;
  }
}

// Decodes what fits from `source` and returns how much of it was used.
std::size_t decodeHexInto(std::string_view source, std::string& buffer, std::size_t& filled, int& highDigit) {
  const char* position = source.data();
  const char* const sourceEnd = position + source.size();
  char* destination = buffer.data() + filled;
  char* const destinationEnd = buffer.data() + buffer.size();
  while (position != sourceEnd && destination != destinationEnd) {
    if (highDigit < 0) decodeHexPairs(position, sourceEnd, destination, destinationEnd);
    if (position == sourceEnd || destination == destinationEnd) break;
    const int digit = hexDigitAt(position++);
    if (digit < 0) continue;
    if (highDigit < 0) {
      highDigit = digit;
    } else {
      *destination++ = static_cast<char>(highDigit * 16 + digit);
      highDigit = -1;
    }
  }
  filled = static_cast<std::size_t>(destination - buffer.data());
  return static_cast<std::size_t>(position - source.data());
}

// The text that ends the data of readline, when the job defines one.
std::optional<std::string> endOfData(Interpreter& interpreter) {
  static const DictionaryKey kEndString("endString");
  const auto* endString = as<StringObject>(interpreter.dictionaries().lookup(kEndString));
  // Of another kind it is a variable of the job that happens to have this name.
  if (endString == nullptr) return std::nullopt;
  return endString->bytes();
}

}  // namespace

// The file is the text being read, whichever chunk that is; the handle holds no position.
void CurrentfileOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(interpreter.memory().newCurrentFile());
}

void ReadOperator::execute(Interpreter& interpreter) {
  const auto file = interpreter.operandStack().pop<FileObject>("read operator");
  // Through a signed byte, whatever a plain one is on the host.
  const auto byte = static_cast<signed char>(file->readChar(interpreter));
  if (byte != 0) interpreter.pushInteger(byte);
  interpreter.pushBoolean(byte != 0);
}

void ReadstringOperator::execute(Interpreter& interpreter) {
  ReadOperands operands(interpreter, text, "Only supports readstring from currentfile");
  Parser& input = interpreter.parser();
  std::string& buffer = operands.buffer->data().writableBytes();
  // All that is there at once: image data goes this way, and it is most of a job's bytes.
  const std::string_view taken = input.remaining().substr(0, buffer.size() - filled_);
  std::ranges::copy(taken, buffer.begin() + static_cast<std::ptrdiff_t>(filled_));
  input.advance(taken.size());
  filled_ += taken.size();
  if (filled_ < buffer.size()) {
    operands.suspend(interpreter, *this);
    return;
  }
  filled_ = 0;
  operands.finish(interpreter);
}

void ReadhexstringOperator::execute(Interpreter& interpreter) {
  // Kept: the message is readline's (files/readhexstring.ps).
  ReadOperands operands(interpreter, text, "Only supports readline from currentfile");
  Parser& input = interpreter.parser();
  std::string& buffer = operands.buffer->data().writableBytes();
  input.advance(decodeHexInto(input.remaining(), buffer, filled_, highDigit_));
  if (filled_ < buffer.size()) {
    operands.suspend(interpreter, *this);
    return;
  }
  // The operator is shared by all its uses, so it must forget this one.
  filled_ = 0;
  highDigit_ = -1;
  operands.finish(interpreter);
}

void ReadlineOperator::execute(Interpreter& interpreter) {
  ReadOperands operands(interpreter, text, "Only supports readline from currentfile");
  // Before the read, since the buffer may be the very string that holds it.
  const std::optional<std::string> endString = endOfData(interpreter);
  Parser& input = interpreter.parser();
  const std::string_view rest = input.remaining();
  const std::string_view taken = rest.substr(0, rest.find_first_of("\r\n"));
  line_.append(taken);
  input.advance(taken.size());
  if (input.atEnd()) {
    operands.suspend(interpreter, *this);
    return;
  }
  input.skipLineEnd();

  // Taken out of the operator before anything can throw, or the next readline would begin with it.
  const std::string line = std::exchange(line_, {});
  std::string& buffer = operands.buffer->data().writableBytes();
  std::copy_n(line.begin(), std::min(line.size(), buffer.size()), buffer.begin());
  const bool isMore = !line.empty() || !input.atEnd();
  const bool result = isMore && line != endString;
  interpreter.pushString(line);
  interpreter.pushBoolean(result);
}

void FilterOperator::execute(Interpreter& interpreter) {
  constexpr std::int32_t kNoByteLimit = std::numeric_limits<std::int32_t>::max();
  ObjectStack& operands = interpreter.operandStack();
  Ref<NameObject> filterName = operands.pop<NameObject>("filter operator");
  if (filterName->text == "SubFileDecode") {
    const auto endString = operands.pop<StringObject>("SubFileDecode EODString param");
    const auto endCount = operands.pop<IntegerObject>("SubFileDecode EODCount param");
    if (endCount->value != 0 || endString->length() != 0) THROW_EX("Unsupported SubFileDecode EOD params");
  }
  // A procedure is asked for the source and the filter runs again: the name waits on the stack until
  // then.
  const Ref<PostscriptObject> source = operands.pop();
  if (source->typeCode == TypeCode::kString || source->typeCode == TypeCode::kFile) {
    operands.push(interpreter.memory().newFilteredFile(source, filterName->text, kNoByteLimit));
  } else if (auto* procedure = as<ArrayObject>(source)) {
    operands.push(std::move(filterName));
    interpreter.executionStack().push(this);
    procedure->start();
    interpreter.executionStack().push(source);
  } else {
    // Kept: the text names SubFileDecode whatever the filter (files/filter.ps).
    THROW_EX("SubFileDecode expected string or proc param");
  }
}

}  // namespace quillpress
