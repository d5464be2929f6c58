#pragma once

namespace quillpress::cli {

// The parts of ISO 19005, each at its level B: what is seen stays, whatever program shows it. The numbers are
// the parts'.
enum class ArchivePart { kNone = 0, k1b = 1, k2b = 2, k3b = 3 };

// "PDF/A-1b"
constexpr const char* nameOf(ArchivePart part) {
  switch (part) {
    case ArchivePart::kNone:
      return "PDF";
    case ArchivePart::k1b:
      return "PDF/A-1b";
    case ArchivePart::k2b:
      return "PDF/A-2b";
    case ArchivePart::k3b:
      return "PDF/A-3b";
  }
  return "";
}

}  // namespace quillpress::cli
