#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillpress::driver {
// Whether a character may stand in the name of an output file. The character code 0 counts as one.
bool isAllowedNameCharacter(wchar_t character);

// Undoes the escapes of a document name: "+" is a space, "%41" the character with this code if it is
// allowed, else "_". An escape that yields the character code 0 ends the name.
std::wstring decodeDocumentName(std::wstring_view name);

// Turns the name of a document into the name of its output file: without what a printing application puts in
// front of it, without a short extension of its own, with allowed characters only, and with the given
// extension. `room` is the number of characters that the path still has room for, its final zero included.
std::wstring cleanedName(std::wstring_view name, wchar_t trimCharacter, std::wstring_view extension,
                         std::size_t room);
}  // namespace quillpress::driver
