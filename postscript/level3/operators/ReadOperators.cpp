#include <algorithm>

#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/streams/CharacterClass.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// file -> int true
// file -> false
void read(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(1);
  ByteSource* const source = sourceOf(operands.top());
  const int byte = source == nullptr ? ByteSource::kNoByte : source->get();
  if (byte == ByteSource::kNoByte) {
    if (source != nullptr) endOf(*source);
    operands.top() = Object::boolean(false);
    return;
  }
  operands.top() = Object::integer(byte);
  operands.push(Object::boolean(true));
}

// Leaves the part of the string that was filled, and whether all of it was.
void pushFilled(Interpreter& interpreter, const Object& string, std::size_t count, bool isWhole) {
  ObjectStack& operands = interpreter.operands();
  operands.top(1) = string.interval(0, static_cast<std::uint32_t>(count));
  operands.top(0) = Object::boolean(isWhole);
}

// The string operand of an operator that fills it.
Object bufferOf(const Interpreter& interpreter) {
  const Object& string = interpreter.operands().top();
  requireWritable(string);
  if (string.length() == 0) raise(ErrorName::kRangeCheck);
  return string;
}

// file string -> substring bool
void readstring(Interpreter& interpreter) {
  ByteSource* const source = sourceOf(interpreter.operands().top(1));
  const Object string = bufferOf(interpreter);
  const std::size_t count = source == nullptr ? 0 : source->read({string.bytes(), string.length()});
  if (source != nullptr && count < string.length()) endOf(*source);
  pushFilled(interpreter, string, count, count == string.length());
}

// What is not a hexadecimal digit is skipped.
std::size_t readHex(ByteSource& source, const Object& string) {
  std::uint32_t count = 0;
  int high = -1;
  for (int byte = source.get(); byte != ByteSource::kNoByte; byte = source.get()) {
    const int digit = hexDigit(static_cast<Byte>(byte));
    if (digit < 0) continue;
    if (high < 0) {
      high = digit;
      continue;
    }
    string.bytes()[count++] = static_cast<std::uint8_t>(high * 16 + digit);
    if (count == string.length()) break;
    high = -1;
  }
  return count;
}

// file string -> substring bool
void readhexstring(Interpreter& interpreter) {
  ByteSource* const source = sourceOf(interpreter.operands().top(1));
  const Object string = bufferOf(interpreter);
  const std::size_t count = source == nullptr ? 0 : readHex(*source, string);
  if (source != nullptr && count < string.length()) endOf(*source);
  pushFilled(interpreter, string, count, count == string.length());
}

// Behind a carriage return, a line feed belongs to the same line end.
void skipLineFeed(ByteSource& source) {
  if (source.refill() && source.peek().front() == '\n') source.consume(1);
}

// file string -> substring bool
void readline(Interpreter& interpreter) {
  ByteSource* const source = sourceOf(interpreter.operands().top(1));
  const Object string = interpreter.operands().top(0);
  requireWritable(string);
  std::uint32_t count = 0;
  bool isWhole = false;
  while (source != nullptr) {
    const int byte = source->get();
    isWhole = byte == '\n' || byte == '\r';
    if (byte == ByteSource::kNoByte || isWhole) {
      if (byte == '\r') skipLineFeed(*source);
      break;
    }
    if (count == string.length()) {
      source->giveBack(1);
      raise(ErrorName::kRangeCheck);
    }
    string.bytes()[count++] = static_cast<std::uint8_t>(byte);
  }
  if (source != nullptr && !isWhole) endOf(*source);
  pushFilled(interpreter, string, count, isWhole);
}

void tokenOfString(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object string = operands.top();
  operands.require(2);
  MemorySource source(bytesOf(textOf(string)));
  Object token;
  if (!interpreter.scanner().scan(source, token)) {
    operands.top() = Object::boolean(false);
    return;
  }
  const auto used = static_cast<std::uint32_t>(source.position());
  operands.top() = string.interval(used, string.length() - used);
  operands.push(token);
  operands.push(Object::boolean(true));
}

void tokenOfFile(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(1);
  ByteSource* const source = sourceOf(operands.top());
  Object token;
  if (source == nullptr || !interpreter.scanner().scan(*source, token)) {
    if (source != nullptr) endOf(*source);
    operands.top() = Object::boolean(false);
    return;
  }
  operands.top() = token;
  operands.push(Object::boolean(true));
}

// file -> any true
// string -> post any true
// file|string -> false
void token(Interpreter& interpreter) {
  const Object& operand = interpreter.operands().top();
  requireReadable(operand);
  if (operand.isString()) {
    tokenOfString(interpreter);
  } else {
    tokenOfFile(interpreter);
  }
}

// file -> int
void bytesavailable(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  const ByteSource* const source = sourceOf(operand);
  const auto available = source == nullptr ? std::nullopt : source->available();
  operand = Object::integer(available ? static_cast<std::int64_t>(*available) : -1);
}

// file ->
void resetfile(Interpreter& interpreter) {
  const File& file = fileOf(interpreter.operands().top());
  if (file.isReadable() && !file.isClosed()) file.source().dropBuffered();
  interpreter.operands().pop();
}

constexpr OperatorRow kReadOperators[] = {
    {"read", "file", read},
    {"readstring", "file string", readstring},
    {"readhexstring", "file string", readhexstring},
    {"readline", "file string", readline},
    {"token", "file|string", token},
    {"bytesavailable", "file", bytesavailable},
    {"resetfile", "file", resetfile},
};

}  // namespace

void addReadOperators(Interpreter& interpreter) {
  interpreter.addOperators(kReadOperators);
}

}  // namespace quillpress::level3
