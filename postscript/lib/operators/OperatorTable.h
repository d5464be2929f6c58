#pragma once

#include <cstddef>

#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A table of operator classes. Registering it makes one object of each, in the table's order.
template <typename... Operators>
struct OperatorTable {
  static constexpr std::size_t kSize = sizeof...(Operators);

  // Calls `registerOne` with a Ref to each new operator; the arguments go to every constructor.
  template <typename RegisterOne, typename... Arguments>
  static void registerAll(RegisterOne registerOne, Arguments&... arguments) {
    (registerOne(make<Operators>(arguments...)), ...);
  }
};

}  // namespace quillpress
