#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
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

// A security identifier taken apart.
struct SecurityIdentifier {
  std::array<std::uint8_t, 6> authority{};  // most significant byte first
  std::span<const std::uint32_t> subAuthorities;
};

// The number of characters that is certainly enough for the text, its final zero included.
std::size_t sidTextSize(const SecurityIdentifier& sid);

// The identifier's text, "S-1-5-21-..."; nothing when `size` is less than sidTextSize.
std::optional<std::wstring> sidText(const SecurityIdentifier& sid, std::size_t size);
}  // namespace quillpress::driver
