#include "postscript/lib/interpreter/RecentNames.h"

namespace quillpress {

Ref<NameObject> RecentNames::executableName(std::string_view text) {
  const DictionaryKey key(text);
  Ref<NameObject>& recent = names_[key.hash % names_.size()];
  const bool isFree = recent && recent->refCount == 1 && recent->executable;
  if (!isFree || recent->key().hash != key.hash || recent->text != text) recent = make<NameObject>(text);
  return recent;
}

}  // namespace quillpress
