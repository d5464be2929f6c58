#include "postscript/level3/operators/Resources.h"

namespace quillpress::level3 {

namespace {

// A permanent dictionary of the interpreter's, under a name that no program uses by accident.
Dictionary& hidden(Interpreter& interpreter, std::string_view name) {
  const Object* const found = interpreter.systemDictionary().find(interpreter.memory().name(name));
  return *found->asDictionary();
}

}  // namespace

Resources::Resources(Interpreter& interpreter)
    : interpreter_(interpreter),
      local_(hidden(interpreter, ".localresources")),
      global_(hidden(interpreter, ".globalresources")) {}

Dictionary* Resources::instances(const Dictionary& categories, Name* category) const {
  const Object* const found = categories.find(category);
  return found == nullptr ? nullptr : found->asDictionary();
}

const Object* Resources::find(Name* category, const Object& key) const {
  const Object normal = interpreter_.memory().keyOf(key);
  for (const Dictionary* categories : {&local_, &global_}) {
    const Dictionary* const found = instances(*categories, category);
    if (found == nullptr) continue;
    if (const Object* const instance = found->find(normal)) return instance;
  }
  return nullptr;
}

void Resources::define(Name* category, const Object& key, const Object& instance) {
  VirtualMemory& memory = interpreter_.memory();
  const bool isGlobal = memory.isGlobal();
  if (isGlobal && (VirtualMemory::isLocal(instance) || VirtualMemory::isLocal(key))) {
    raise(ErrorName::kInvalidAccess);
  }
  Dictionary& categories = isGlobal ? global_ : local_;
  if (instances(categories, category) == nullptr) memory.put(categories, category, memory.newDictionary(10));
  memory.put(*instances(categories, category), key, instance);
}

void Resources::undefine(Name* category, const Object& key) {
  VirtualMemory& memory = interpreter_.memory();
  if (Dictionary* const local = instances(local_, category)) memory.remove(*local, key);
  // What is global goes only for a job that works in global memory.
  Dictionary* const global = instances(global_, category);
  if (global != nullptr && memory.isGlobal()) memory.remove(*global, key);
}

std::vector<Object> Resources::keys(Name* category) const {
  std::vector<Object> keys;
  const Dictionary* const local = instances(local_, category);
  if (local != nullptr) {
    for (const Dictionary::Entry& entry : local->entries()) {
      if (!entry.key.isNull()) keys.push_back(entry.key);
    }
  }
  const Dictionary* const global = instances(global_, category);
  if (global != nullptr) {
    for (const Dictionary::Entry& entry : global->entries()) {
      const bool isHidden = local != nullptr && local->find(entry.key) != nullptr;
      if (!entry.key.isNull() && !isHidden) keys.push_back(entry.key);
    }
  }
  return keys;
}

}  // namespace quillpress::level3
