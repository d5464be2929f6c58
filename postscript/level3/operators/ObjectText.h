#pragma once

#include <string>

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// The text of a number: integers in decimal, reals in the shortest form of at most `digits` digits that reads
// back as a real.
std::string numberText(const Object& number, int digits);

// What `cvs` and `=` write: the text of strings, names, operators, numbers and booleans, "--nostringval--"
// for everything else.
std::string plainText(const Object& object);

// What `==` writes: the object as it would stand in a program, as far as that can be. Arrays deeper than a
// fixed, generous limit end in "...", so that one that contains itself can be shown.
std::string syntaxText(const Object& object);

// What `type` gives.
std::string_view typeName(const Object& object);

}  // namespace quillpress::level3
