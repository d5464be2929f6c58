#include <gtest/gtest.h>

#ifndef _WIN32
#include <thread>
#endif

#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

// What a name that has been executed remembers.
PostscriptObject* rememberedIn(Interpreter& interpreter, std::string_view text) {
  const KnownName* known = interpreter.memory().names().find(DictionaryKey(text));
  return known == nullptr ? nullptr : known->remembered;
}

TEST(RememberedNamesTest, ANameRemembersTheValueInTheOnlyPermanentDictionary) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), nullptr);
  run(interpreter, "x ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), interpreter.dictionaries().userDictionary().lookup("x"));
  EXPECT_EQ(rememberedIn(interpreter, "def"), interpreter.dictionaries().systemDictionary().lookup("def"));
}

TEST(RememberedNamesTest, ANewValueIsRememberedInItsPlace) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def x /x 6 def ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), interpreter.dictionaries().userDictionary().lookup("x"));
}

TEST(RememberedNamesTest, TwoPermanentDictionariesLeaveNothingToRemember) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def x globaldict /x 6 put ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), nullptr);
  run(interpreter, "x ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), nullptr);
  run(interpreter, "userdict /x undef x ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), interpreter.dictionaries().globalDictionary().lookup("x"));
  EXPECT_EQ(operandsOf(interpreter), "5 5 6");
}

TEST(RememberedNamesTest, ANameOfAnyOtherDictionaryIsNeverRemembered) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def x 1 dict /x 6 put x ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), nullptr);
  run(interpreter, "errordict /y 6 put /y 5 def y ");
  EXPECT_EQ(rememberedIn(interpreter, "y"), nullptr);
}

TEST(RememberedNamesTest, AnUndefinedNameIsForgotten) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def x userdict /x undef ");
  EXPECT_EQ(rememberedIn(interpreter, "x"), nullptr);
}

TEST(RememberedNamesTest, AnythingButTheThreeAtTheBottomMakesNamesSearch) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def x ");
  const KnownName* known = interpreter.memory().names().find(DictionaryKey("x"));
  DictionarySet& dictionaries = interpreter.dictionaries();
  EXPECT_NE(dictionaries.remembered(known), nullptr);
  const Ref<PostscriptObject> user = &dictionaries.userDictionary();
  dictionaries.end();
  EXPECT_EQ(dictionaries.remembered(known), nullptr);
  dictionaries.begin(interpreter.memory().newDictionary());
  EXPECT_EQ(dictionaries.remembered(known), nullptr);
  dictionaries.end();
  dictionaries.begin(user);
  EXPECT_NE(dictionaries.remembered(known), nullptr);
  dictionaries.begin(interpreter.memory().newDictionary());
  EXPECT_NE(dictionaries.remembered(known), nullptr);
}

// A hundred thousand look-ups below two hundred thousand dictionaries: walks would take minutes.
TEST(RememberedNamesTest, DictionariesThatAreBegunDoNotSlowNamesDown) {
  Interpreter interpreter;
  run(interpreter, "/x 5 def 200000 {1 dict begin} repeat 100000 {x pop} repeat x ");
  EXPECT_EQ(operandsOf(interpreter), "5");
  EXPECT_EQ(interpreter.dictionaries().stack().count(), 200003U);
}

#ifndef _WIN32  // the Windows build has no std::thread
TEST(RememberedNamesTest, TwoInterpretersOnTwoThreadsShareNothing) {
  const auto count = [](const char* text, std::string& result) {
    Interpreter interpreter;
    for (int i = 0; i < 200; ++i) run(interpreter, text);
    result = operandsOf(interpreter);
  };
  constexpr char kUp[] = "/x 0 def /p {x 1 add} def 100 {/x p def} repeat clear x ";
  constexpr char kDown[] = "/x 0 def /p {x 1 sub} def 100 {/x p def} repeat clear x ";
  std::string up;
  std::string down;
  std::thread first(count, kUp, std::ref(up));
  std::thread second(count, kDown, std::ref(down));
  first.join();
  second.join();
  EXPECT_EQ(up, "100");
  EXPECT_EQ(down, "-100");
}
#endif

}  // namespace
}  // namespace quillpress
