#include <gtest/gtest.h>

#include "postscript/lib/interpreter/Parser.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class ParserTest : public testing::Test {
 protected:
  void feed(std::string_view chunk) { parser.setInput(chunk.data(), chunk.size()); }

  // The tokens of a chunk, each as its description, a literal name with a slash before it.
  std::string tokensOf(std::string_view chunk) {
    feed(chunk);
    std::string text;
    while (const Ref<PostscriptObject> token = parser.nextToken()) {
      const bool isLiteralName = token->typeCode == TypeCode::kName && !token->executable;
      text += (isLiteralName ? "/" : "") + token->describe() + ";";
    }
    return text;
  }

  MemorySet memory;
  DictionarySet dictionaries{memory};
  Parser parser{memory, dictionaries};
};

TEST_F(ParserTest, CharactersAreReadSkippedAndPutBack) {
  feed("abc");
  EXPECT_EQ(parser.nextChar(), 'a');
  parser.skipChar();
  EXPECT_EQ(parser.nextChar(), 'c');
  EXPECT_TRUE(parser.atEnd());
  parser.backChar();
  EXPECT_EQ(parser.nextChar(), 'c');
}

TEST_F(ParserTest, NothingIsReadPastTheEnd) {
  feed("");
  EXPECT_EQ(messageOf([&] { parser.nextChar(); }), "Cannot get next char when none left");
  EXPECT_EQ(messageOf([&] { parser.skipChar(); }), "Cannot skip when no chars left");
}

TEST_F(ParserTest, NothingIsPutBackBeforeTheStart) {
  feed("a");
  EXPECT_EQ(messageOf([&] { parser.backChar(); }), "Cannot go back");
  parser.skipChar();
  EXPECT_EQ(messageOf([&] { parser.backChar(); }), "");
}

TEST_F(ParserTest, TheErrorsNameTheirSource) {
  feed("");
  try {
    parser.nextChar();
    FAIL();
  } catch (const Ex& error) {
    EXPECT_TRUE(error.formatted().starts_with("[Parser.cpp:")) << error.formatted();
  }
}

TEST_F(ParserTest, AStringBelongsToItsTaker) {
  for (const std::string_view text : {"(a)", "<61>"}) {
    feed(text);
    EXPECT_EQ(parser.nextToken()->refCount, 1) << text;
  }
}

// The parser keeps some numbers and names to hand them out again, but none that somebody else holds.
TEST_F(ParserTest, ATokenThatIsHeldNeverChanges) {
  for (const std::string_view text : {"5 ", "2.5 ", "/a ", "a "}) {
    feed(text);
    const Ref<PostscriptObject> held = parser.nextToken();
    const std::string before = held->describe();
    for (int i = 0; i < 1000; ++i) {
      feed("7 3.5 /b b ");
      while (parser.nextToken()) continue;
    }
    EXPECT_EQ(held->describe(), before);
  }
}

TEST_F(ParserTest, ANumberThatWasMadeExecutableIsLiteralWhenItComesAgain) {
  for (int i = 0; i < 1000; ++i) {
    feed("5 2.5 /a ");
    for (int token = 0; token < 3; ++token) {
      const Ref<PostscriptObject> taken = parser.nextToken();
      ASSERT_FALSE(taken->executable);
      taken->executable = true;
    }
  }
}

TEST_F(ParserTest, ATokenNeedsItsDelimiter) {
  EXPECT_EQ(tokensOf("abc"), "");
  EXPECT_EQ(tokensOf("def"), "");
  EXPECT_EQ(tokensOf(" "), "ps_name abcdef;");
  EXPECT_EQ(tokensOf("12"), "");
  EXPECT_EQ(tokensOf("3 4"), "ps_integer 123;");
  EXPECT_EQ(tokensOf("["), "ps_integer 4;ps_name [;");
  EXPECT_EQ(tokensOf("(ab)"), "ps_string ab;");
}

TEST_F(ParserTest, EmptyChunksChangeNothing) {
  EXPECT_EQ(tokensOf("(a\\"), "");
  EXPECT_EQ(tokensOf(""), "");
  EXPECT_EQ(tokensOf("nb)"), "ps_string a\nb;");
}

TEST_F(ParserTest, StringsGoOnInTheNextChunk) {
  EXPECT_EQ(tokensOf("(ab"), "");
  EXPECT_EQ(tokensOf("c)"), "ps_string abc;");
  EXPECT_EQ(tokensOf("(a("), "");
  EXPECT_EQ(tokensOf("b)"), "");
  EXPECT_EQ(tokensOf(")"), "ps_string a(b);");
}

TEST_F(ParserTest, EscapesGoOnInTheNextChunk) {
  EXPECT_EQ(tokensOf("(\\"), "");
  EXPECT_EQ(tokensOf("1"), "");
  EXPECT_EQ(tokensOf("0"), "");
  EXPECT_EQ(tokensOf("1)"), "ps_string A;");
  EXPECT_EQ(tokensOf("(\\1"), "");
  EXPECT_EQ(tokensOf("x)"), "ps_string x;");
  EXPECT_EQ(tokensOf("(\\12"), "");
  EXPECT_EQ(tokensOf(")"), "ps_string ;");
  EXPECT_EQ(tokensOf("(\\\r"), "");
  EXPECT_EQ(tokensOf("\n)"), "ps_string \n;");
  EXPECT_EQ(tokensOf("(\\\n"), "");
  EXPECT_EQ(tokensOf("\r)"), "ps_string ;");
}

TEST_F(ParserTest, CommentsGoOnInTheNextChunk) {
  EXPECT_EQ(tokensOf("1 % a comment ("), "ps_integer 1;");
  EXPECT_EQ(tokensOf("and more 2"), "");
  EXPECT_EQ(tokensOf("\n3 "), "ps_integer 3;");
}

TEST_F(ParserTest, NamesWithSlashesGoOnInTheNextChunk) {
  dictionaries.userDictionary().define("x", make<IntegerObject>(5));
  EXPECT_EQ(tokensOf("/"), "");
  EXPECT_EQ(tokensOf("a"), "");
  EXPECT_EQ(tokensOf("b "), "/ps_name ab;");
  EXPECT_EQ(tokensOf("/"), "");
  EXPECT_EQ(tokensOf("/"), "");
  EXPECT_EQ(tokensOf("x"), "");
  EXPECT_EQ(tokensOf(" "), "ps_integer 5;");
}

TEST_F(ParserTest, EncodedStringsGoOnInTheNextChunk) {
  EXPECT_EQ(tokensOf("<"), "");
  EXPECT_EQ(tokensOf("~"), "");
  EXPECT_EQ(tokensOf("87~"), "");
  EXPECT_EQ(tokensOf("><4"), "ps_string H;");
  EXPECT_EQ(tokensOf("8>"), "ps_string H;");
  EXPECT_EQ(tokensOf("<~AS>"), "");
  EXPECT_EQ(tokensOf("t\"~"), "ps_string ehno;");
  EXPECT_EQ(tokensOf(">7 "), "ps_integer 7;");
}

TEST_F(ParserTest, AHexStringHoldsItsTextWithTheClosingBracket) {
  feed("<48 65>");
  const Ref<PostscriptObject> token = parser.nextToken();
  const auto* string = as<StringObject>(token);
  ASSERT_NE(string, nullptr);
  EXPECT_EQ(string->data().asHeld(), "48 65>");
  EXPECT_EQ(string->data().decodeFilters(), std::vector<std::string>{"ASCIIHexDecode"});
}

TEST_F(ParserTest, AnAscii85StringHoldsItsTextWithTheEndMark) {
  feed("<~87cUR~>");
  const Ref<PostscriptObject> token = parser.nextToken();
  const auto* string = as<StringObject>(token);
  ASSERT_NE(string, nullptr);
  EXPECT_EQ(string->data().asHeld(), "87cUR~>");
  EXPECT_EQ(string->data().decodeFilters(), std::vector<std::string>{"ASCII85Decode"});
}

TEST_F(ParserTest, Ascii85DataWithABracketEndsAtTheTilde) {
  feed("<~AS>t\"~>");
  const Ref<PostscriptObject> token = parser.nextToken();
  const auto* string = as<StringObject>(token);
  ASSERT_NE(string, nullptr);
  EXPECT_EQ(string->data().asHeld(), "AS>t\"~");
  EXPECT_EQ(string->data().decodeFilters(), std::vector<std::string>{"ASCII85Decode"});
  EXPECT_EQ(parser.nextChar(), '>');
}

TEST_F(ParserTest, APlainStringHasNoDecodeFilter) {
  feed("(48>)");
  const Ref<PostscriptObject> token = parser.nextToken();
  EXPECT_TRUE(as<StringObject>(token)->data().decodeFilters().empty());
}

TEST_F(ParserTest, AnImmediatelyEvaluatedNameIsTheValueItself) {
  const auto value = make<IntegerObject>(5);
  dictionaries.userDictionary().define("x", value);
  feed("//x ");
  EXPECT_EQ(parser.nextToken().get(), value.get());
}

TEST_F(ParserTest, AnUndefinedImmediatelyEvaluatedNameThrowsWithEveryCall) {
  constexpr const char* kMessage = "Undefined Immediately Evaluated Name";
  feed("//x ");
  EXPECT_EQ(messageOf([&] { parser.nextToken(); }), kMessage);
  EXPECT_EQ(messageOf([&] { parser.nextToken(); }), kMessage);
  feed(" 1 2 ");
  EXPECT_EQ(messageOf([&] { parser.nextToken(); }), kMessage);
}

TEST_F(ParserTest, TheNextChunkMayCompleteAnUndefinedImmediatelyEvaluatedName) {
  feed("//x ");
  EXPECT_THROW(parser.nextToken(), Ex);
  dictionaries.userDictionary().define("xy", make<IntegerObject>(5));
  EXPECT_EQ(tokensOf("y 6 "), "ps_integer 5;ps_integer 6;");
}

TEST_F(ParserTest, AnUndefinedImmediatelyEvaluatedNameIsFoundOnceItIsDefined) {
  feed("//x ");
  EXPECT_THROW(parser.nextToken(), Ex);
  dictionaries.userDictionary().define("x", make<IntegerObject>(5));
  EXPECT_EQ(tokensOf(" "), "ps_integer 5;");
}

TEST_F(ParserTest, AWrongEscapeThrowsWithEveryCall) {
  constexpr const char* kMessage = "Unsupported character escape in string";
  feed("(\\qnnn)");
  for (int i = 0; i < 4; ++i) EXPECT_EQ(messageOf([&] { parser.nextToken(); }), kMessage) << i;
  feed("n)");
  EXPECT_EQ(messageOf([&] { parser.nextToken(); }), kMessage);
  feed("");
  EXPECT_EQ(parser.nextToken().get(), nullptr);
}

TEST_F(ParserTest, StringsGoToTheCurrentMemoryArea) {
  feed("(a)");
  const Ref<PostscriptObject> before = parser.nextToken();
  memory.useGlobal();
  feed("<62>");
  const Ref<PostscriptObject> after = parser.nextToken();
  EXPECT_EQ(&as<StringObject>(before)->memoryArea(), &memory.local());
  EXPECT_EQ(&as<StringObject>(after)->memoryArea(), &memory.global());
}

TEST_F(ParserTest, TokensMayBeOfAnyLength) {
  const std::string name(1000000, 'n');
  EXPECT_EQ(tokensOf(name), "");
  EXPECT_EQ(tokensOf(name + " "), "ps_name " + name + name + ";");
  EXPECT_EQ(tokensOf("(" + name), "");
  EXPECT_EQ(tokensOf(name + ")"), "ps_string " + name + name + ";");
  EXPECT_EQ(tokensOf("%" + name), "");
  EXPECT_EQ(tokensOf(name + "\n"), "");
  const std::string digits(100000, '1');
  EXPECT_EQ(tokensOf(digits + " "), "ps_name " + digits + ";");
  EXPECT_EQ(tokensOf("0." + std::string(100000, '0') + " "), "ps_real 0.000000;");
  EXPECT_EQ(tokensOf("16#" + std::string(100000, '0') + "1 "), "ps_integer 1;");
  EXPECT_EQ(tokensOf("(" + std::string(100000, '(')), "");
  EXPECT_EQ(tokensOf(std::string(100001, ')')).size(), 200000U + std::string("ps_string ;").size());
}

TEST_F(ParserTest, TheWhiteSpaceThatEndedATokenBelongsToIt) {
  feed("a  b");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), " b");
}

TEST_F(ParserTest, AnyOtherDelimiterStaysForTheReader) {
  feed("a[");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), "[");
}

TEST_F(ParserTest, AStringEndsWithItsParenthesis) {
  feed("(a) ");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), " ");
}

TEST_F(ParserTest, CarriageReturnAndLineFeedCountAsOneDelimiter) {
  feed("a\r\n\nb");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), "\nb");
  feed("a\n\rb");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), "\rb");
}

TEST_F(ParserTest, CarriageReturnAndLineFeedCountAsOneDelimiterAcrossChunks) {
  feed("a\r");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  feed("\n\nb");
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), "\nb");
  feed("a\r");
  (void)parser.nextToken();
  parser.skipTokenDelimiter();
  feed("");
  parser.skipTokenDelimiter();
  feed("\nb");
  parser.skipTokenDelimiter();
  EXPECT_EQ(parser.remaining(), "b");
}

}  // namespace
}  // namespace quillpress
