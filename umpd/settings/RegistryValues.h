#pragma once

#include <optional>
#include <string>

#include "umpd/rules/StringMap.h"
#include "umpd/win32/Windows.h"

namespace quillpress::driver {

// Typed values of an open registry key: numbers of 32 bits and texts.

bool hasValue(HKEY key, const wchar_t* name);

enum class ReadResult { kFound, kAbsent, kFailed };

// kAbsent leaves the number alone; a value of another kind counts as kFailed.
ReadResult readNumber(HKEY key, const wchar_t* name, int& number);

// A text of any length; nothing when it is absent or of another kind.
std::optional<std::wstring> readText(HKEY key, const wchar_t* name);

// The same of the commands that other programs leave in the registry, whose kinds of text vary.
std::optional<std::wstring> readCommandLine(HKEY key, const wchar_t* name);

bool writeNumber(HKEY key, const std::wstring& name, int value);
bool writeText(HKEY key, const std::wstring& name, const std::wstring& value);

// Replaces the map by all values of the key that have a name and are numbers or texts. Returns false, and
// leaves the map as it was, when the key does not tell what it has. Counts in `refused` those that found no
// room.
bool readAllValues(HKEY key, StringMap& map, unsigned& refused);

}  // namespace quillpress::driver
