#include "postscript/lib/interpreter/RecentNames.h"

namespace quillpress {

Ref<NameObject> RecentNames::executableName(std::string_view text) {
  const DictionaryKey key(text);
  Ref<NameObject>& recent = names_[key.hash % names_.size()];
  // An object that somebody holds is somebody's: cvx and the like change it in place. One that nobody
  // else holds can be handed out again.
  const bool isFree = recent && recent->refCount == 1 && recent->executable;
  if (!isFree || recent->key().hash != key.hash || recent->text != text) recent = make<NameObject>(text);
  return recent;
}

}  // namespace quillpress
