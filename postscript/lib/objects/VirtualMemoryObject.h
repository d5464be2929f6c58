#pragma once

#include <string>
#include <utility>

#include "postscript/lib/base/Arena.h"
#include "postscript/lib/objects/CompositeObject.h"
#include "postscript/lib/objects/NameTable.h"
#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// A memory area: the owner of the payloads that were made in it. Nothing is given back before the area
// itself goes: there is no snapshot behind save and restore.
class VirtualMemoryObject final : public PostscriptObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kSave;

  // The dictionaries of the area keep the table of names right, if there is one. REQUIRES: the table
  // outlives them.
  explicit VirtualMemoryObject(std::string displayName, NameTable* names = nullptr)
      : PostscriptObject(kTypeCode), names_(names), name_(std::move(displayName)) {}
  ~VirtualMemoryObject() override;

  [[nodiscard]] NameTable* names() const { return names_; }

  // Makes a payload, which is the area's from the first moment: a handle can be given up at any time.
  template <typename Payload, typename... Arguments>
  Payload& add(Arguments&&... arguments) {
    static_assert(alignof(Payload) <= Arena::kAlignment);
    auto* payload = new (arena_.allocate(sizeof(Payload))) Payload(std::forward<Arguments>(arguments)...);
    payload->madeBefore_ = std::exchange(lastMade_, payload);
    return *payload;
  }

  [[nodiscard]] std::string describe() const override;

  // An empty area named "Copy of ...": the payloads stay with this one.
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

 private:
  NameTable* names_;
  Arena arena_;                        // holds the payloads
  CompositeData* lastMade_ = nullptr;  // and through it all others
  std::string name_;
};

}  // namespace quillpress
