#include "postscript/level3/fonts/SystemFonts.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillpress::level3 {

namespace {

constexpr const char* kFolders[] = {"/usr/share/fonts/type1/urw-base35", "/usr/share/fonts/urw-base35",
                                    "/usr/local/share/fonts/urw-base35", "/usr/share/fonts/gsfonts"};

// The files of a family: upright, italic, bold, bold italic.
struct Family {
  std::array<std::string_view, 4> files;
};

constexpr Family kSerif{
    {"NimbusRoman-Regular", "NimbusRoman-Italic", "NimbusRoman-Bold", "NimbusRoman-BoldItalic"}};
constexpr Family kSans{
    {"NimbusSans-Regular", "NimbusSans-Italic", "NimbusSans-Bold", "NimbusSans-BoldItalic"}};
constexpr Family kNarrow{{"NimbusSansNarrow-Regular", "NimbusSansNarrow-Oblique", "NimbusSansNarrow-Bold",
                          "NimbusSansNarrow-BoldOblique"}};
constexpr Family kMono{
    {"NimbusMonoPS-Regular", "NimbusMonoPS-Italic", "NimbusMonoPS-Bold", "NimbusMonoPS-BoldItalic"}};
constexpr Family kPalatino{{"P052-Roman", "P052-Italic", "P052-Bold", "P052-BoldItalic"}};
constexpr Family kSchoolbook{{"C059-Roman", "C059-Italic", "C059-Bold", "C059-BdIta"}};
constexpr Family kBookman{
    {"URWBookman-Light", "URWBookman-LightItalic", "URWBookman-Demi", "URWBookman-DemiItalic"}};
constexpr Family kGothic{
    {"URWGothic-Book", "URWGothic-BookOblique", "URWGothic-Demi", "URWGothic-DemiOblique"}};
constexpr Family kChancery{
    {"Z003-MediumItalic", "Z003-MediumItalic", "Z003-MediumItalic", "Z003-MediumItalic"}};
constexpr Family kSymbolFamily{
    {"StandardSymbolsPS", "StandardSymbolsPS", "StandardSymbolsPS", "StandardSymbolsPS"}};
constexpr Family kDingbats{{"D050000L", "D050000L", "D050000L", "D050000L"}};

// A family's name without blanks and hyphens, in small letters.
struct NamedFamily {
  std::string_view name;
  const Family* family;
};

// The metrics of these are those of the family. Longer names come before those that begin them.
constexpr NamedFamily kExact[] = {
    {"timesnewromanpsmt", &kSerif},
    {"timesnewromanps", &kSerif},
    {"timesnewroman", &kSerif},
    {"times", &kSerif},
    {"nimbusroman", &kSerif},
    {"helveticanarrow", &kNarrow},
    {"arialnarrow", &kNarrow},
    {"nimbussansnarrow", &kNarrow},
    {"helvetica", &kSans},
    {"arialmt", &kSans},
    {"arial", &kSans},
    {"nimbussans", &kSans},
    {"couriernewpsmt", &kMono},
    {"couriernewps", &kMono},
    {"couriernew", &kMono},
    {"courier", &kMono},
    {"nimbusmonops", &kMono},
    {"palatino", &kPalatino},
    {"p052", &kPalatino},
    {"newcenturyschlbk", &kSchoolbook},
    {"c059", &kSchoolbook},
    {"bookman", &kBookman},
    {"urwbookman", &kBookman},
    {"avantgarde", &kGothic},
    {"urwgothic", &kGothic},
    {"zapfchancery", &kChancery},
    {"itczapfchancery", &kChancery},
    {"z003", &kChancery},
    {"symbol", &kSymbolFamily},
    {"symbolmt", &kSymbolFamily},
    {"standardsymbolsps", &kSymbolFamily},
    {"zapfdingbats", &kDingbats},
    {"itczapfdingbats", &kDingbats},
    {"d050000l", &kDingbats},
};

// What the same fonts were called before 2016; programs and font maps still have these names.
struct FormerName {
  std::string_view name;
  std::string_view file;
};

constexpr FormerName kFormerNames[] = {
    {"URWGothicL-Book", "URWGothic-Book"},
    {"URWGothicL-Demi", "URWGothic-Demi"},
    {"URWGothicL-BookObli", "URWGothic-BookOblique"},
    {"URWGothicL-DemiObli", "URWGothic-DemiOblique"},
    {"URWBookmanL-Ligh", "URWBookman-Light"},
    {"URWBookmanL-DemiBold", "URWBookman-Demi"},
    {"URWBookmanL-LighItal", "URWBookman-LightItalic"},
    {"URWBookmanL-DemiBoldItal", "URWBookman-DemiItalic"},
    {"CenturySchL-Roma", "C059-Roman"},
    {"CenturySchL-Bold", "C059-Bold"},
    {"CenturySchL-Ital", "C059-Italic"},
    {"CenturySchL-BoldItal", "C059-BdIta"},
    {"Dingbats", "D050000L"},
    {"NimbusSanL-Regu", "NimbusSans-Regular"},
    {"NimbusSanL-Bold", "NimbusSans-Bold"},
    {"NimbusSanL-ReguItal", "NimbusSans-Italic"},
    {"NimbusSanL-BoldItal", "NimbusSans-BoldItalic"},
    {"NimbusSanL-ReguCond", "NimbusSansNarrow-Regular"},
    {"NimbusSanL-BoldCond", "NimbusSansNarrow-Bold"},
    {"NimbusSanL-ReguCondItal", "NimbusSansNarrow-Oblique"},
    {"NimbusSanL-BoldCondItal", "NimbusSansNarrow-BoldOblique"},
    {"NimbusRomNo9L-Regu", "NimbusRoman-Regular"},
    {"NimbusRomNo9L-Medi", "NimbusRoman-Bold"},
    {"NimbusRomNo9L-ReguItal", "NimbusRoman-Italic"},
    {"NimbusRomNo9L-MediItal", "NimbusRoman-BoldItalic"},
    {"NimbusMonL-Regu", "NimbusMonoPS-Regular"},
    {"NimbusMonL-Bold", "NimbusMonoPS-Bold"},
    {"NimbusMonL-ReguObli", "NimbusMonoPS-Italic"},
    {"NimbusMonL-BoldObli", "NimbusMonoPS-BoldItalic"},
    {"URWPalladioL-Roma", "P052-Roman"},
    {"URWPalladioL-Bold", "P052-Bold"},
    {"URWPalladioL-Ital", "P052-Italic"},
    {"URWPalladioL-BoldItal", "P052-BoldItalic"},
    {"StandardSymL", "StandardSymbolsPS"},
    {"URWChanceryL-MediItal", "Z003-MediumItalic"},
};

// What part of a name tells of the family, in the order in which it is looked for.
constexpr NamedFamily kGuesses[] = {
    {"dingbat", &kDingbats},
    {"wingding", &kDingbats},
    {"symbol", &kSymbolFamily},
    {"chancery", &kChancery},
    {"script", &kChancery},
    {"courier", &kMono},
    {"mono", &kMono},
    {"typewriter", &kMono},
    {"consol", &kMono},
    {"fixed", &kMono},
    {"narrow", &kNarrow},
    {"condensed", &kNarrow},
    {"schoolbook", &kSchoolbook},
    {"schlbk", &kSchoolbook},
    {"palatino", &kPalatino},
    {"palladio", &kPalatino},
    {"bookantiqua", &kPalatino},
    {"bookman", &kBookman},
    {"avantgarde", &kGothic},
    {"centurygothic", &kGothic},
    {"futura", &kGothic},
    {"sansserif", &kSans},
    {"sans", &kSans},
    {"helvet", &kSans},
    {"arial", &kSans},
    {"verdana", &kSans},
    {"tahoma", &kSans},
    {"calibri", &kSans},
    {"univers", &kSans},
    {"frutiger", &kSans},
    {"gothic", &kSans},
    {"trebuchet", &kSans},
    {"segoe", &kSans},
};

// Words that tell the style, and those that a plain style may have.
constexpr std::string_view kItalicWords[] = {"italic", "oblique", "kursiv", "slanted", "bdita"};
constexpr std::string_view kBoldWords[] = {"bold", "demi", "heavy", "black", "bdita"};
constexpr std::string_view kPlainWords[] = {"roman", "regular", "light", "book", "medium", "mt", "normal"};

std::string simplified(std::string_view name) {
  std::string result;
  for (const char character : name) {
    if (character >= 'A' && character <= 'Z') {
      result += static_cast<char>(character - 'A' + 'a');
    } else if ((character >= 'a' && character <= 'z') || (character >= '0' && character <= '9')) {
      result += character;
    }
  }
  return result;
}

template <typename Words>
bool holdsAny(std::string_view text, const Words& words) {
  return std::ranges::any_of(
      words, [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

// Takes a word out of the text; false when it is not there.
bool remove(std::string& text, std::string_view word) {
  const std::size_t place = text.find(word);
  if (place != std::string::npos) text.erase(place, word.size());
  return place != std::string::npos;
}

// Whether a text says nothing but a style.
bool isStyle(std::string text) {
  for (const std::string_view word : kItalicWords) remove(text, word);
  for (const std::string_view word : kBoldWords) remove(text, word);
  for (const std::string_view word : kPlainWords) remove(text, word);
  return text.empty();
}

std::size_t styleOf(std::string_view text) {
  return (holdsAny(text, kItalicWords) ? 1U : 0U) + (holdsAny(text, kBoldWords) ? 2U : 0U);
}

// A folder beside the program, on a system that has none of these fonts; elsewhere none.
std::filesystem::path folderOfProgram() {
#ifdef _WIN32
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return std::filesystem::path(name).parent_path() / "fonts";
#else
  return {};
#endif
}

}  // namespace

SystemFonts::SystemFonts() : folder_(folderOfProgram()) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder_, error)) folder_.clear();
  for (const char* folder : kFolders) {
    if (folder_.empty() && std::filesystem::is_directory(folder, error)) folder_ = folder;
  }
}

SystemFonts::SystemFonts(std::filesystem::path folder) : folder_(std::move(folder)) {}

std::optional<SystemFont> SystemFonts::fontOfFile(std::string_view name, bool isExact) const {
  if (folder_.empty()) return std::nullopt;
  std::filesystem::path file = folder_ / (std::string(name) + ".t1");
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  return SystemFont{std::move(file), std::string(name), isExact};
}

std::optional<SystemFont> SystemFonts::findExactly(std::string_view fontName) const {
  const auto* const former = std::ranges::find(kFormerNames, fontName, &FormerName::name);
  if (former != std::end(kFormerNames)) return fontOfFile(former->file, true);
  const std::string name = simplified(fontName);
  for (const NamedFamily& each : kExact) {
    if (!name.starts_with(each.name)) continue;
    const std::string style = name.substr(each.name.size());
    if (isStyle(style)) return fontOfFile(each.family->files[styleOf(style)], true);
  }
  return std::nullopt;
}

std::optional<SystemFont> SystemFonts::find(std::string_view fontName) const {
  if (auto exact = findExactly(fontName)) return exact;
  const std::string name = simplified(fontName);
  const auto* guess = std::ranges::find_if(
      kGuesses, [&](const NamedFamily& each) { return name.find(each.name) != std::string::npos; });
  const Family& family = guess != std::end(kGuesses) ? *guess->family : kSerif;
  return fontOfFile(family.files[styleOf(name)], false);
}

}  // namespace quillpress::level3
