#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress::level3 {

// A font file of the system that stands in for a font that a job names but does not carry.
struct SystemFont {
  // A Type 1 font as text (.t1).
  std::filesystem::path file;
  // Its own name, "NimbusRoman-Regular".
  std::string name;
  // Whether it is made for the name: the metrics are the same. Otherwise family or style are guessed.
  bool isExact = false;
};

// The fonts of the URW base-35 set, by the names of the standard fonts and their usual relatives.
class SystemFonts {
 public:
  // Where the system's packages install the set, or a folder of the caller's.
  SystemFonts();
  explicit SystemFonts(std::filesystem::path folder);

  // Nothing when the set is not installed. Unknown names get a font by what they tell of family and style.
  std::optional<SystemFont> find(std::string_view fontName) const;

  // Only what is made for the name.
  std::optional<SystemFont> findExactly(std::string_view fontName) const;

 private:
  std::optional<SystemFont> fontOfFile(std::string_view name, bool isExact) const;

  std::filesystem::path folder_;
};

}  // namespace quillpress::level3
