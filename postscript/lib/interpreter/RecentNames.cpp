#include "postscript/lib/interpreter/RecentNames.h"

namespace quillpress {

Ref<NameObject> RecentNames::literalName(std::string_view text) {
  const DictionaryKey key(text);
  Ref<NameObject>& recent = literal_[key.hash % kCount];
  if (!holds(recent, key) || recent->refCount > 1 || recent->executable) {
    recent = make<NameObject>(text);
    recent->executable = false;
  }
  return recent;
}

}  // namespace quillpress
