#pragma once

#include <string>
#include <string_view>

namespace quillpress {

// Whether a character may stand in the name of an output file. The character code 0 counts as one.
bool isAllowedNameCharacter(wchar_t character);

// Undoes the escapes of a document name: "+" is a space, "%41" the character with this code if it is
// allowed, else "_". An escape that yields the character code 0 ends the name.
std::wstring decodeDocumentName(std::wstring_view name);

}  // namespace quillpress
