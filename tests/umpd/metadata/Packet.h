#pragma once

#include <string>

namespace quillpress::harness {

// What stands between the first `before` and the next `after`; the test fails when it is not there.
std::wstring between(const std::wstring& text, const std::wstring& before, const std::wstring& after);

// The date of the packet; the test fails unless both dates of it are the same.
std::wstring dateOf(const std::wstring& packet);

// The packet with DATE instead of its dates.
std::wstring withoutDates(const std::wstring& packet);

// A packet with the dates DATE and nothing that depends on settings but these pieces.
std::wstring packetWith(const std::wstring& pdfProperties, const std::wstring& dublinCore);

// The dc block of a packet around its elements.
std::wstring dublinCore(const std::wstring& elements);

// Elements of it.
std::wstring titleElement(const std::wstring& text);
std::wstring creatorElement(const std::wstring& text);
std::wstring descriptionElement(const std::wstring& text);

}  // namespace quillpress::harness
