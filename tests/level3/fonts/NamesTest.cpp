#include <gtest/gtest.h>

#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/GlyphNames.h"
#include "postscript/level3/fonts/SystemFonts.h"
#include "postscript/level3/fonts/ToUnicodeMap.h"

namespace quillpress::level3 {

namespace {

TEST(GlyphNames, ListedNames) {
  EXPECT_EQ(textOfGlyphName("A"), U"A");
  EXPECT_EQ(textOfGlyphName("zukatakana"), U"\u30BA");
  EXPECT_EQ(textOfGlyphName("eacute"), U"\u00E9");
  EXPECT_EQ(textOfGlyphName("dalethatafpatah"), U"\u05D3\u05B2");
  EXPECT_EQ(textOfGlyphName("space"), U" ");
}

TEST(GlyphNames, NumberedNames) {
  EXPECT_EQ(textOfGlyphName("uni20AC"), U"\u20AC");
  EXPECT_EQ(textOfGlyphName("uni20AC0308"), U"\u20AC\u0308");
  EXPECT_EQ(textOfGlyphName("u1F600"), U"\U0001F600");
  EXPECT_EQ(textOfGlyphName("u0041"), U"A");
}

TEST(GlyphNames, WrongNumbersTellNothing) {
  EXPECT_EQ(textOfGlyphName("uni20ac"), U"");
  EXPECT_EQ(textOfGlyphName("uni20A"), U"");
  EXPECT_EQ(textOfGlyphName("uniD800"), U"");
  EXPECT_EQ(textOfGlyphName("u110000"), U"");
  EXPECT_EQ(textOfGlyphName("u041"), U"");
}

TEST(GlyphNames, LigaturesAndSuffixes) {
  EXPECT_EQ(textOfGlyphName("f_f_i"), U"ffi");
  EXPECT_EQ(textOfGlyphName("a.alt"), U"a");
  EXPECT_EQ(textOfGlyphName("Lcommaaccent_uni20AC0308_u1040C.alternate"), U"\u013B\u20AC\u0308\U0001040C");
}

TEST(GlyphNames, NamesThatTellNothing) {
  for (const char* name : {".notdef", "g12", "cid123", "G01", "", "foo", "_", "c65", "index5"}) {
    EXPECT_EQ(textOfGlyphName(name), U"") << name;
  }
}

TEST(GlyphNames, SmallCapitalsAndPiecesCanBeSearched) {
  EXPECT_EQ(textOfGlyphName("Asmall"), U"a");
  EXPECT_EQ(textOfGlyphName("sevenoldstyle"), U"7");
  EXPECT_EQ(textOfGlyphName("parenleftbt"), U"\u239D");
  EXPECT_EQ(textOfGlyphName("registersans"), U"\u00AE");
}

TEST(GlyphNames, Dingbats) {
  EXPECT_EQ(textOfDingbatName("a1"), U"\u2701");
  EXPECT_EQ(textOfDingbatName("a4"), U"\u260E");
  EXPECT_EQ(textOfDingbatName("a35"), U"\u2605");
  EXPECT_EQ(textOfDingbatName("a112"), U"\u2663");
  EXPECT_EQ(textOfDingbatName("a120"), U"\u2460");
  EXPECT_EQ(textOfDingbatName("a160"), U"\u2794");
  EXPECT_EQ(textOfDingbatName("a191"), U"\u27BE");
  EXPECT_EQ(textOfDingbatName("a999"), U"");
  EXPECT_EQ(textOfDingbatName(".notdef"), U"");
}

TEST(GlyphNames, CharactersHaveTheirUsualName) {
  EXPECT_EQ(glyphNameOf(U' '), "space");
  EXPECT_EQ(glyphNameOf(U'-'), "hyphen");
  EXPECT_EQ(glyphNameOf(U'\u00E9'), "eacute");
  EXPECT_EQ(glyphNameOf(U'\u20AC'), "Euro");
  EXPECT_EQ(glyphNameOf(U'\U0001F600'), "");
}

TEST(Encodings, KnownPlaces) {
  EXPECT_EQ(standardEncoding()[0x27], "quoteright");
  EXPECT_EQ(standardEncoding()[0xFB], "germandbls");
  EXPECT_EQ(standardEncoding()[0x80], ".notdef");
  EXPECT_EQ(isoLatin1Encoding()[0xFF], "ydieresis");
  EXPECT_EQ(symbolEncoding()[0x61], "alpha");
  EXPECT_EQ(zapfDingbatsEncoding()[0x21], "a1");
  EXPECT_EQ(expertEncoding()[0x30], "zerooldstyle");
  EXPECT_EQ(winAnsiEncoding()[0x80], "Euro");
  EXPECT_EQ(macRomanEncoding()[0x80], "Adieresis");
}

TEST(ToUnicodeMap, NeighboursAreRanges) {
  ToUnicodeMap map(1);
  map.add(65, U"A");
  map.add(66, U"B");
  map.add(67, U"C");
  map.add(70, U"ffi");
  const std::string cmap = map.cmap();
  EXPECT_NE(cmap.find("<00><FF>"), std::string::npos);
  EXPECT_NE(cmap.find("1 beginbfrange\n<41><43><0041>\nendbfrange"), std::string::npos);
  EXPECT_NE(cmap.find("1 beginbfchar\n<46><006600660069>\nendbfchar"), std::string::npos);
}

TEST(ToUnicodeMap, RangesStayInOneRowOfBytes) {
  ToUnicodeMap map(2);
  map.add(0x00FE, U"a");
  map.add(0x00FF, U"b");
  map.add(0x0100, U"c");
  map.add(0x0200, U"\u00FF");
  map.add(0x0201, U"\u0100");
  const std::string cmap = map.cmap();
  EXPECT_NE(cmap.find("<00FE><00FF><0061>"), std::string::npos);
  EXPECT_NE(cmap.find("<0100><0063>"), std::string::npos);
  EXPECT_NE(cmap.find("<0200><00FF>\n<0201><0100>"), std::string::npos);
}

TEST(ToUnicodeMap, SupplementaryPlanesArePairs) {
  ToUnicodeMap map(2);
  map.add(1, U"\U0001F600");
  EXPECT_NE(map.cmap().find("<0001><D83DDE00>"), std::string::npos);
}

TEST(ToUnicodeMap, FirstMeaningStays) {
  ToUnicodeMap map(1);
  EXPECT_TRUE(map.isEmpty());
  map.add(1, U"");
  EXPECT_TRUE(map.isEmpty());
  map.add(1, U"a");
  map.add(1, U"b");
  EXPECT_NE(map.cmap().find("<01><0061>"), std::string::npos);
}

TEST(ToUnicodeMap, SectionsHaveAtMostAHundredEntries) {
  ToUnicodeMap map(2);
  for (std::uint32_t code = 0; code < 250; ++code) map.add(code, {U"xy", 2});
  const std::string cmap = map.cmap();
  EXPECT_NE(cmap.find("100 beginbfchar"), std::string::npos);
  EXPECT_NE(cmap.find("50 beginbfchar"), std::string::npos);
  EXPECT_EQ(cmap.find("250 beginbfchar"), std::string::npos);
}

TEST(SystemFonts, StandardNamesHaveTheirOwnFont) {
  const SystemFonts fonts;
  const std::pair<const char*, const char*> kNames[] = {
      {"Times-Roman", "NimbusRoman-Regular"},
      {"Times-BoldItalic", "NimbusRoman-BoldItalic"},
      {"TimesNewRomanPS-BoldMT", "NimbusRoman-Bold"},
      {"TimesNewRomanPSMT", "NimbusRoman-Regular"},
      {"TimesNewRoman,Italic", "NimbusRoman-Italic"},
      {"Helvetica", "NimbusSans-Regular"},
      {"Helvetica-BoldOblique", "NimbusSans-BoldItalic"},
      {"Helvetica-Narrow-Oblique", "NimbusSansNarrow-Oblique"},
      {"ArialMT", "NimbusSans-Regular"},
      {"Arial-BoldItalicMT", "NimbusSans-BoldItalic"},
      {"Courier", "NimbusMonoPS-Regular"},
      {"CourierNewPS-ItalicMT", "NimbusMonoPS-Italic"},
      {"Palatino-Roman", "P052-Roman"},
      {"NewCenturySchlbk-BoldItalic", "C059-BdIta"},
      {"Bookman-Light", "URWBookman-Light"},
      {"Bookman-DemiItalic", "URWBookman-DemiItalic"},
      {"AvantGarde-BookOblique", "URWGothic-BookOblique"},
      {"ZapfChancery-MediumItalic", "Z003-MediumItalic"},
      {"Symbol", "StandardSymbolsPS"},
      {"ZapfDingbats", "D050000L"},
      {"NimbusSans-Bold", "NimbusSans-Bold"},
      {"NimbusRomNo9L-Medi", "NimbusRoman-Bold"},
      {"NimbusSanL-Regu", "NimbusSans-Regular"},
      {"NimbusSanL-BoldCondItal", "NimbusSansNarrow-BoldOblique"},
      {"NimbusMonL-ReguObli", "NimbusMonoPS-Italic"},
      {"URWPalladioL-Roma", "P052-Roman"},
      {"CenturySchL-BoldItal", "C059-BdIta"},
      {"URWChanceryL-MediItal", "Z003-MediumItalic"},
      {"StandardSymL", "StandardSymbolsPS"},
      {"Dingbats", "D050000L"},
  };
  for (const auto& [name, file] : kNames) {
    const auto font = fonts.find(name);
    ASSERT_TRUE(font) << name;
    EXPECT_EQ(font->name, file) << name;
    EXPECT_TRUE(font->isExact) << name;
  }
}

TEST(SystemFonts, OtherNamesAreGuessed) {
  const SystemFonts fonts;
  EXPECT_EQ(fonts.find("Verdana-Bold")->name, "NimbusSans-Bold");
  EXPECT_EQ(fonts.find("LucidaSansTypewriter")->name, "NimbusMonoPS-Regular");
  EXPECT_EQ(fonts.find("Garamond-Italic")->name, "NimbusRoman-Italic");
  EXPECT_FALSE(fonts.find("Garamond")->isExact);
  EXPECT_FALSE(fonts.findExactly("Garamond"));
  EXPECT_FALSE(fonts.findExactly("TimesTen-Roman"));
}

TEST(SystemFonts, WithoutTheSetNothingIsFound) {
  EXPECT_FALSE(SystemFonts("/nonexistent").find("Times-Roman"));
}

}  // namespace

}  // namespace quillpress::level3
