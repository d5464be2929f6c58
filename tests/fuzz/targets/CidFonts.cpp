// CIDFonts of type 0: numbers that tell where things are in binary data, then the data; and entries of a
// glyph directory.

#include "postscript/level3/fonts/CidFont.h"
#include "tests/fuzz/support/Choices.h"
#include "tests/fuzz/support/FontChecks.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

level3::CidFont::FontDictionary fontDictionaryOf(Choices& choices) {
  level3::CidFont::FontDictionary dictionary;
  dictionary.privateData.charstringType = choices.flag() ? 2 : 1;
  dictionary.privateData.lenIV = -1;
  dictionary.subrMapOffset = choices.byte();
  dictionary.subrCount = choices.below(16);
  dictionary.sdBytes = choices.below(6);
  if (choices.flag()) dictionary.matrix.a = 0.0005;
  return dictionary;
}

}  // namespace

void runCidFonts(Input input) {
  Choices choices(input);
  level3::CidFont::Data data;
  for (std::size_t i = choices.below(4); i > 0; --i)
    data.fontDictionaries.push_back(fontDictionaryOf(choices));
  data.cidMapOffset = choices.byte();
  data.cidCount = choices.below(300);
  data.fdBytes = choices.below(6);
  data.gdBytes = choices.below(6);
  const bool isAdded = choices.flag();
  const std::string entry = choices.bytes(choices.below(40));
  data.glyphData = choices.remaining();
  try {
    level3::CidFont font(std::move(data));
    if (isAdded) font.add(1, entry);
    font.glyphOfCid(2);
    checkFont(font, Units::kOther);
  } catch (const level3::FontError&) {
    // As it shall be.
  }
}

}  // namespace quillpress::fuzz
