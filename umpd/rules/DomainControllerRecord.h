#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress::driver {

// The name of the domain controller, in memory that all processes of a session map. The state is the
// only coordination between them.
struct DomainControllerRecord {
  static constexpr char kWorking = 'w';  // some process is asking for the name
  static constexpr char kReady = 'r';

  char state;
  char reserved;                   // never written
  std::array<char16_t, 260> name;  // with its final zero; empty when there is no controller
};

static_assert(sizeof(DomainControllerRecord) == 522);
static_assert(offsetof(DomainControllerRecord, state) == 0);
static_assert(offsetof(DomainControllerRecord, name) == 2);

// Stores a name, cut to the field.
void storeName(DomainControllerRecord& record, std::wstring_view name);

// The name; nothing when it has no end: another program has written into the record.
std::optional<std::wstring> readName(const DomainControllerRecord& record);

}  // namespace quillpress::driver
