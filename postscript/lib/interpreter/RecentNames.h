#pragma once

#include <array>
#include <string_view>

#include "postscript/lib/objects/NameObject.h"

namespace quillpress {

// Spares the making of a new object for each executable name that a job writes again and again. A name is
// handed out a second time only when nobody else holds it any more, so nobody can tell.
class RecentNames {
 public:
  // An executable name with that text.
  Ref<NameObject> executableName(std::string_view text);

 private:
  std::array<Ref<NameObject>, 256> names_;  // by the low bits of the hash
};

}  // namespace quillpress
