#include "postscript/level3/fonts/CffStandard.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace quillpress::level3 {

namespace {

constexpr std::string_view kStrings =
    ".notdef space exclam quotedbl numbersign dollar percent ampersand quoteright parenleft "
    "parenright asterisk plus comma hyphen period slash zero one two three four five six seven "
    "eight nine colon semicolon less equal greater question at A B C D E F G H I J K L M N O P Q R "
    "S T U V W X Y Z bracketleft backslash bracketright asciicircum underscore quoteleft a b c d e "
    "f g h i j k l m n o p q r s t u v w x y z braceleft bar braceright asciitilde exclamdown cent "
    "sterling fraction yen florin section currency quotesingle quotedblleft guillemotleft "
    "guilsinglleft guilsinglright fi fl endash dagger daggerdbl periodcentered paragraph bullet "
    "quotesinglbase quotedblbase quotedblright guillemotright ellipsis perthousand questiondown "
    "grave acute circumflex tilde macron breve dotaccent dieresis ring cedilla hungarumlaut ogonek "
    "caron emdash AE ordfeminine Lslash Oslash OE ordmasculine ae dotlessi lslash oslash oe "
    "germandbls onesuperior logicalnot mu trademark Eth onehalf plusminus Thorn onequarter divide "
    "brokenbar degree thorn threequarters twosuperior registered minus eth multiply threesuperior "
    "copyright Aacute Acircumflex Adieresis Agrave Aring Atilde Ccedilla Eacute Ecircumflex "
    "Edieresis Egrave Iacute Icircumflex Idieresis Igrave Ntilde Oacute Ocircumflex Odieresis "
    "Ograve Otilde Scaron Uacute Ucircumflex Udieresis Ugrave Yacute Ydieresis Zcaron aacute "
    "acircumflex adieresis agrave aring atilde ccedilla eacute ecircumflex edieresis egrave iacute "
    "icircumflex idieresis igrave ntilde oacute ocircumflex odieresis ograve otilde scaron uacute "
    "ucircumflex udieresis ugrave yacute ydieresis zcaron exclamsmall Hungarumlautsmall "
    "dollaroldstyle dollarsuperior ampersandsmall Acutesmall parenleftsuperior parenrightsuperior "
    "twodotenleader onedotenleader zerooldstyle oneoldstyle twooldstyle threeoldstyle fouroldstyle "
    "fiveoldstyle sixoldstyle sevenoldstyle eightoldstyle nineoldstyle commasuperior "
    "threequartersemdash periodsuperior questionsmall asuperior bsuperior centsuperior dsuperior "
    "esuperior isuperior lsuperior msuperior nsuperior osuperior rsuperior ssuperior tsuperior ff "
    "ffi ffl parenleftinferior parenrightinferior Circumflexsmall hyphensuperior Gravesmall Asmall "
    "Bsmall Csmall Dsmall Esmall Fsmall Gsmall Hsmall Ismall Jsmall Ksmall Lsmall Msmall Nsmall "
    "Osmall Psmall Qsmall Rsmall Ssmall Tsmall Usmall Vsmall Wsmall Xsmall Ysmall Zsmall "
    "colonmonetary onefitted rupiah Tildesmall exclamdownsmall centoldstyle Lslashsmall Scaronsmall "
    "Zcaronsmall Dieresissmall Brevesmall Caronsmall Dotaccentsmall Macronsmall figuredash "
    "hypheninferior Ogoneksmall Ringsmall Cedillasmall questiondownsmall oneeighth threeeighths "
    "fiveeighths seveneighths onethird twothirds zerosuperior foursuperior fivesuperior sixsuperior "
    "sevensuperior eightsuperior ninesuperior zeroinferior oneinferior twoinferior threeinferior "
    "fourinferior fiveinferior sixinferior seveninferior eightinferior nineinferior centinferior "
    "dollarinferior periodinferior commainferior Agravesmall Aacutesmall Acircumflexsmall "
    "Atildesmall Adieresissmall Aringsmall AEsmall Ccedillasmall Egravesmall Eacutesmall "
    "Ecircumflexsmall Edieresissmall Igravesmall Iacutesmall Icircumflexsmall Idieresissmall "
    "Ethsmall Ntildesmall Ogravesmall Oacutesmall Ocircumflexsmall Otildesmall Odieresissmall "
    "OEsmall Oslashsmall Ugravesmall Uacutesmall Ucircumflexsmall Udieresissmall Yacutesmall "
    "Thornsmall Ydieresissmall 001.000 001.001 001.002 001.003 Black Bold Book Light Medium Regular "
    "Roman Semibold";

struct SidRange {
  std::uint16_t first;
  std::uint16_t count;
};

constexpr auto kExpertCharset = std::to_array<SidRange>({{1, 1},
                                                         {229, 10},
                                                         {13, 3},
                                                         {99, 1},
                                                         {239, 10},
                                                         {27, 2},
                                                         {249, 18},
                                                         {109, 2},
                                                         {267, 52},
                                                         {158, 1},
                                                         {155, 1},
                                                         {163, 1},
                                                         {319, 8},
                                                         {150, 1},
                                                         {164, 1},
                                                         {169, 1},
                                                         {327, 52}});
constexpr auto kExpertSubsetCharset =
    std::to_array<SidRange>({{1, 1},    {231, 2}, {235, 4}, {13, 3},  {99, 1},  {239, 10}, {27, 2},  {249, 3},
                             {253, 14}, {109, 2}, {267, 4}, {272, 1}, {300, 3}, {305, 1},  {314, 2}, {158, 1},
                             {155, 1},  {163, 1}, {320, 7}, {150, 1}, {164, 1}, {169, 1},  {327, 20}});

std::array<std::string_view, kCffStandardStrings> split() {
  std::array<std::string_view, kCffStandardStrings> strings;
  std::string_view text = kStrings;
  for (std::string_view& string : strings) {
    string = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(string.size() + 1, text.size()));
  }
  return strings;
}

const std::array<std::string_view, kCffStandardStrings>& strings() {
  static const std::array<std::string_view, kCffStandardStrings> table = split();
  return table;
}

std::vector<std::uint16_t> charsetOf(std::span<const SidRange> ranges) {
  std::vector<std::uint16_t> charset{0};
  for (const SidRange& range : ranges) {
    for (unsigned i = 0; i < range.count; ++i) charset.push_back(static_cast<std::uint16_t>(range.first + i));
  }
  return charset;
}

}  // namespace

std::string_view cffStandardString(std::size_t number) {
  return strings().at(number);
}

std::optional<std::uint16_t> cffStandardStringNumber(std::string_view string) {
  static const auto numbers = [] {
    std::unordered_map<std::string_view, std::uint16_t> map;
    for (std::size_t i = 0; i < kCffStandardStrings; ++i)
      map.emplace(strings()[i], static_cast<std::uint16_t>(i));
    return map;
  }();
  const auto found = numbers.find(string);
  return found != numbers.end() ? std::optional(found->second) : std::nullopt;
}

std::vector<std::uint16_t> cffPredefinedCharset(unsigned number) {
  if (number == 1) return charsetOf(kExpertCharset);
  if (number == 2) return charsetOf(kExpertSubsetCharset);
  constexpr auto kIsoAdobe = std::to_array<SidRange>({{1, 228}});
  return charsetOf(kIsoAdobe);
}

}  // namespace quillpress::level3
