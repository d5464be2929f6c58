#pragma once

#include <memory>
#include <string>
#include <vector>

#include "postscript/lib/objects/CompositeData.h"
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

  [[nodiscard]] NameTable* names() const { return names_; }

  // Takes a payload over.
  void add(std::unique_ptr<CompositeData> payload);

  [[nodiscard]] std::string describe() const override;

  // An empty area named "Copy of ...": the payloads stay with this one.
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

 private:
  NameTable* names_;
  std::vector<std::unique_ptr<CompositeData>> payloads_;
  std::string name_;
};

}  // namespace quillpress
