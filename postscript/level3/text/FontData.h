#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// What belongs to a procedure set of font data: the binary data behind StartData.

// (Binary)|(Hex) length StartData ->      Of CIDInit: the CIDFont that is being written gets its glyphs and
// is defined.
void startCidFontData(Interpreter& interpreter);

// Adds the procedure set FontSetInit, with which jobs bring CFF FontSets.
void addFontSetOperators(Interpreter& interpreter);

// Adds the procedure set BitmapFontInit, with which CIDFonts of type 4 get and lose their glyphs.
void addBitmapFontOperators(Interpreter& interpreter);

// The `count` bytes behind the operator in the file that is being executed. Throws ioerror when there are
// fewer.
std::string dataBehind(Interpreter& interpreter, std::size_t count, bool isHexadecimal);

// Takes the procedure set away from the dictionary stack, where the job has put it.
void endProcedureSet(Interpreter& interpreter);

}  // namespace quillpress::level3
