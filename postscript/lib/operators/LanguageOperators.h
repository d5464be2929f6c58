#pragma once

namespace quillpress {

class DictionarySet;

// Defines the hand-written operators of the language in systemdict, over the generated ones.
void registerLanguageOperators(DictionarySet& dictionaries);

}  // namespace quillpress
