#include "postscript/lib/objects/DictionaryObject.h"

#include "postscript/lib/objects/NameObject.h"
#include "postscript/lib/objects/StringObject.h"
#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

std::string keyText(const PostscriptObject& key) {
  if (const auto* name = as<NameObject>(&key)) return name->text;
  if (const auto* string = as<StringObject>(&key)) return string->cvsString();
  return key.describe();
}

DictionaryObject::DictionaryObject(VirtualMemoryObject& memoryArea, std::string name)
    : CompositeObject(memoryArea, memoryArea.add<DictionaryData>(std::move(name), memoryArea.names())) {}

std::string DictionaryObject::describe() const {
  std::string text = PostscriptObject::describe();
  // Kept: put together as it stands, so one blank or two come before the count (KindsTest.DictionaryTexts).
  if (!name().empty()) text += " " + name() + " ";
  return text + " " + std::to_string(count()) + " entries (" + memoryArea().describe() + ")";
}

std::string DictionaryObject::printString() const {
  return "-dict-";
}

Ref<PostscriptObject> DictionaryObject::clone(int /*argument*/) const {
  return Ref<PostscriptObject>(new DictionaryObject(*this));
}

void DictionaryObject::define(const PostscriptObject& key, Ref<PostscriptObject> value) {
  if (const auto* name = as<NameObject>(&key)) {
    data().define(name->key(), std::move(value));
  } else {
    data().define(DictionaryKey(keyText(key)), std::move(value));
  }
}

// Names, which nearly all keys are, carry their hash; for other keys the text has to be made.
PostscriptObject* DictionaryObject::lookup(const PostscriptObject& key) const {
  if (const auto* name = as<NameObject>(&key)) return data().lookup(name->key());
  return data().lookup(DictionaryKey(keyText(key)));
}

void DictionaryObject::remove(const PostscriptObject& key) {
  data().remove(DictionaryKey(keyText(key)));
}

}  // namespace quillpress
