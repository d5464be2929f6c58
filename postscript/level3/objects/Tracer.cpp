#include "postscript/level3/objects/Tracer.h"

#include "postscript/level3/objects/Dictionary.h"

namespace quillpress::level3 {

void Tracer::finish() {
  while (!pending_.empty()) {
    Storage* const storage = pending_.back();
    pending_.pop_back();
    follow(*storage);
  }
}

void Tracer::follow(Storage& storage) {
  switch (storage.kind()) {
    case StorageKind::kString:
      break;
    case StorageKind::kArray:
      visit(std::span<const Object>(static_cast<ArrayStorage&>(storage).elements(), storage.capacity()));
      break;
    case StorageKind::kDictionary:
      for (const Dictionary::Entry& entry : static_cast<Dictionary&>(storage).entries()) {
        visit(entry.key);
        visit(entry.value);
      }
      break;
    case StorageKind::kForeign:
      static_cast<ForeignStorage&>(storage).contents().trace(*this);
      break;
  }
}

}  // namespace quillpress::level3
