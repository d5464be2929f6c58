#include "tests/umpd/harness/ImportTable.h"

namespace quillpress::harness {
namespace {

// A pointer to what lies `offset` bytes behind the start of the module.
template <class Record>
Record* at(HMODULE module, DWORD offset) {
  return reinterpret_cast<Record*>(reinterpret_cast<BYTE*>(module) + offset);
}

void write(void** address, void* value) {
  DWORD protection = 0;
  VirtualProtect(address, sizeof value, PAGE_READWRITE, &protection);
  *address = value;
  VirtualProtect(address, sizeof value, protection, &protection);
}

}  // namespace

ImportTable::ImportTable(HMODULE module) {
  const auto* dos = at<IMAGE_DOS_HEADER>(module, 0);
  const auto* headers = at<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(dos->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (directory.VirtualAddress == 0) return;

  for (auto* dll = at<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress); dll->Name != 0; ++dll) {
    const auto* names = at<IMAGE_THUNK_DATA32>(module, dll->OriginalFirstThunk);
    auto* addresses = at<void*>(module, dll->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
      if (IMAGE_SNAP_BY_ORDINAL32(names->u1.Ordinal)) continue;
      const auto* import = at<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData);
      const char* name = reinterpret_cast<const char*>(import->Name);
      entries_[name].push_back({addresses, *addresses});
    }
  }
}

void ImportTable::redirect(const std::string& name, void* function) {
  for (const Entry& entry : entries_.at(name)) write(entry.address, function);
}

void ImportTable::restore(const std::string& name) {
  for (const Entry& entry : entries_.at(name)) write(entry.address, entry.original);
}

}  // namespace quillpress::harness
