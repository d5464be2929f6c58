#pragma once

#include "postscript/level3/objects/VirtualMemory.h"

namespace quillpress::level3 {

// What a font's GlyphDirectory, an array or a dictionary, has for a glyph so far; null when it is nothing.
inline const Object* glyphDirectoryEntry(const Object& font, Name* glyphDirectory, std::uint32_t index) {
  const Object* const directory = font.asDictionary()->find(glyphDirectory);
  if (directory == nullptr) return nullptr;
  const Object* entry = nullptr;
  if (directory->isDictionary()) entry = directory->asDictionary()->find(Object::integer(index));
  if (directory->isArray() && index < directory->length()) entry = &directory->elements()[index];
  return entry != nullptr && entry->isString() ? entry : nullptr;
}

}  // namespace quillpress::level3
