#pragma once

#include <cstdint>
#include <string>

namespace quillpress::level3 {

// Decodes base-85 text, five characters to four bytes.
class Base85 {
 public:
  // One character of the text, no white space. False when it cannot stand here.
  bool take(std::uint8_t character, std::string& bytes);
  // The last group, which may be short. False when it is too short to mean a byte.
  bool finish(std::string& bytes);

 private:
  bool flush(unsigned count, std::string& bytes);

  std::uint64_t group_ = 0;
  unsigned digits_ = 0;
};

}  // namespace quillpress::level3
