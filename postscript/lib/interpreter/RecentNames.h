#pragma once

#include <array>
#include <string_view>

#include "postscript/lib/objects/NameObject.h"

namespace quillpress {

// Spares the making of a new object for each name that a job writes again and again.
class RecentNames {
 public:
  // An executable name with that text. It may have been handed out before: nothing makes an executable name
  // literal or changes its text, so nobody can tell.
  Ref<NameObject> executableName(std::string_view text) {
    const DictionaryKey key(text);
    Ref<NameObject>& recent = executable_[key.hash % kCount];
    if (!holds(recent, key) || recent->refCount > kMostHolders) recent = make<NameObject>(text);
    return recent;
  }

  // A literal name with that text. cvx changes one in place, so it is handed out a second time only when
  // nobody else holds it any more.
  Ref<NameObject> literalName(std::string_view text);

 private:
  static constexpr std::size_t kCount = 256;

  [[nodiscard]] static bool holds(const Ref<NameObject>& name, DictionaryKey key) {
    return name && name->key().hash == key.hash && name->text == key.text;
  }

  // By the low bits of the hash.
  std::array<Ref<NameObject>, kCount> executable_;
  std::array<Ref<NameObject>, kCount> literal_;
};

}  // namespace quillpress
