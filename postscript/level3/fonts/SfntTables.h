#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::level3 {

// The tables of a TrueType font. Those that stick out of the data are cut.
class SfntTables {
 public:
  // A font that is cut into strings, as sfnts of a Type 42 font.
  explicit SfntTables(const std::vector<std::string>& pieces);

  // Empty when there is none.
  std::string_view find(std::string_view tag) const;

 private:
  struct Place {
    std::size_t offset;
    std::size_t size;
  };

  std::string bytes_;
  std::map<std::string, Place, std::less<>> places_;
};

// A font file of these tables, by tag, with its checksums. Only `head` must be there.
std::string sfntOf(const std::map<std::string, std::string>& tables);

}  // namespace quillpress::level3
