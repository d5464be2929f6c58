#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// A mapping from the codes of a string to characters of one of several fonts, as begincmap and endcmap build
// it.
class CMap {
 public:
  // Codes are read with their highest byte first; ranges hold byte by byte.
  struct Range {
    std::string first;
    std::string last;
    bool contains(std::string_view code) const;
    std::uint32_t offsetOf(std::string_view code) const;
  };
  enum class Target { kCid, kCode, kName, kNotdef };
  struct Mapping {
    Range range;
    Target target = Target::kCid;
    std::uint32_t font = 0;
    std::uint32_t first = 0;
    Name* name = nullptr;
  };
  // What a code stands for.
  struct Found {
    std::size_t length = 0;
    std::uint32_t code = 0;
    std::uint32_t font = 0;
    Target target = Target::kCid;
    std::uint32_t value = 0;
    Name* name = nullptr;
  };

  void addCodespace(Range range) { codespaces_.push_back(std::move(range)); }
  void add(Mapping mapping);
  // All of another one, behind what is here.
  void use(const CMap& other);
  // To be called when it is complete.
  void finish();

  // Two bytes are the CID.
  bool isIdentity = false;
  // What usefont has said, for the entries that follow.
  std::uint32_t currentFont = 0;

  // Reads the code at the beginning of the bytes, as long as its code space says. REQUIRES: !bytes.empty()
  Found find(std::string_view bytes) const;

 private:
  std::size_t lengthOf(std::string_view bytes) const;

  std::vector<Range> codespaces_;
  std::vector<Mapping> mappings_;
  std::vector<Mapping> notdefs_;
};

}  // namespace quillpress::level3
