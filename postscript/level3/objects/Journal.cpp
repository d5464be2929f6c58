#include "postscript/level3/objects/Journal.h"

#include <algorithm>
#include <utility>

namespace quillpress::level3 {

void Journal::record(Storage& storage) {
  Record record{&storage, storage.epoch_, {}, {}, 0, Access::kUnlimited, nullptr};
  switch (storage.kind()) {
    case StorageKind::kString:
      return;
    case StorageKind::kArray: {
      Object* const elements = static_cast<ArrayStorage&>(storage).elements();
      record.elements.assign(elements, elements + storage.capacity());
      bytes_ += storage.capacity() * sizeof(Object);
      break;
    }
    case StorageKind::kDictionary: {
      const auto& dictionary = static_cast<Dictionary&>(storage);
      record.entries = dictionary.entries_;
      record.maxLength = dictionary.maxLength_;
      record.access = dictionary.access_;
      bytes_ += record.entries.size() * sizeof(Dictionary::Entry);
      break;
    }
    case StorageKind::kForeign:
      record.contents = static_cast<ForeignStorage&>(storage).contents().snapshot();
      if (record.contents == nullptr) return;
      break;
  }
  bytes_ += sizeof(Record);
  records_.push_back(std::move(record));
  storage.epoch_ = serial_;
}

void Journal::undo() {
  while (!records_.empty()) {
    putBack(records_.back());
    records_.pop_back();
  }
}

void Journal::putBack(Record& record) {
  Storage& storage = *record.storage;
  storage.epoch_ = record.epoch;
  switch (storage.kind()) {
    case StorageKind::kString:
      break;
    case StorageKind::kArray:
      std::copy(record.elements.begin(), record.elements.end(),
                static_cast<ArrayStorage&>(storage).elements());
      break;
    case StorageKind::kDictionary:
      static_cast<Dictionary&>(storage).replace(std::move(record.entries), record.maxLength, record.access);
      break;
    case StorageKind::kForeign:
      static_cast<ForeignStorage&>(storage).contents_ = std::move(record.contents);
      break;
  }
}

void Journal::trace(Tracer& tracer) const {
  for (const Record& record : records_) {
    // The storage itself lives on: an object that is unreachable now may come back.
    tracer.visit(record.storage);
    tracer.visit(record.elements);
    for (const Dictionary::Entry& entry : record.entries) {
      tracer.visit(entry.key);
      tracer.visit(entry.value);
    }
    if (record.contents != nullptr) record.contents->trace(tracer);
  }
}

}  // namespace quillpress::level3
