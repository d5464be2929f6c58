#include "postscript/level3/text/FontData.h"

#include <algorithm>

#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/streams/AsciiHexFilter.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/FontInstances.h"

namespace quillpress::level3 {

namespace {

// As much as is there at once: the count alone must not take memory.
constexpr std::size_t kBlock = std::size_t{1} << 20;

std::string readBytes(ByteSource& source, std::size_t count) {
  std::string bytes;
  while (bytes.size() < count) {
    const std::size_t start = bytes.size();
    const std::size_t wanted = std::min(count - start, kBlock);
    bytes.resize(start + wanted);
    const std::size_t got = source.read({reinterpret_cast<Byte*>(bytes.data()) + start, wanted});
    if (got < wanted) raise(ErrorName::kIoError);
  }
  return bytes;
}

}  // namespace

std::string dataBehind(Interpreter& interpreter, std::size_t count, bool isHexadecimal) {
  const Object file = interpreter.currentFile();
  if (!file.isFile() || sourceOf(file) == nullptr) raise(ErrorName::kIoError);
  if (!isHexadecimal) return readBytes(*sourceOf(file), count);
  AsciiHexDecoder decoder(fileOf(file).sourcePointer());
  std::string bytes = readBytes(decoder, count);
  // What ends the digits belongs to them.
  decoder.drain();
  return bytes;
}

void endProcedureSet(Interpreter& interpreter) {
  DictionaryStack& dictionaries = interpreter.dictionaries();
  if (dictionaries.depth() > DictionaryStack::kPermanent) dictionaries.end();
}

void startCidFontData(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  VirtualMemory& memory = interpreter.memory();
  const std::string_view form = textOf(operands.top(1));
  if (form != "Binary" && form != "Hex") raise(ErrorName::kRangeCheck);
  const std::size_t count = countOf(operands.top());
  const Object font = Object::dictionary(interpreter.dictionaries().top());
  const Object name = FontEntries(interpreter, font).require("CIDFontName");
  const Object data = memory.newString(dataBehind(interpreter, count, form == "Hex"));
  memory.put(*font.asDictionary(), memory.name("GlyphData"), data);
  operands.pop(2);
  defineFont(interpreter, "CIDFont", name, font);
  // The CIDFont's dictionary, and CIDInit below it.
  endProcedureSet(interpreter);
  endProcedureSet(interpreter);
}

}  // namespace quillpress::level3
