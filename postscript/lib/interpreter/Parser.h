#pragma once

#include <string>
#include <string_view>

#include "postscript/lib/interpreter/CharacterClasses.h"
#include "postscript/lib/interpreter/DictionarySet.h"
#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/interpreter/RecentNames.h"

namespace quillpress {

// Turns PostScript text into objects, one token a call. The input is one chunk at a time; a token that a
// chunk's end cuts is kept, with everything known about it, and finished from the next chunk. The parser
// never reads past its chunk. The operators that read the current file share its cursor.
class Parser {
 public:
  Parser(const MemorySet& memory, const DictionarySet& dictionaries)
      : memory_(memory), dictionaries_(dictionaries) {}

  // Points the input at a chunk, which must stay alive until the next call. What is gathered of a token
  // is kept.
  void setInput(const char* start, std::size_t length);

  // The next object, or null when the chunk is used up before one is complete. Throws Ex; nothing is
  // rolled back then, so an error of the tokenizer can come again with the next call.
  Ref<PostscriptObject> nextToken();

  // The input's cursor. Reading past the end, or going back before the start, throws Ex.
  [[nodiscard]] bool atEnd() const { return cursor_ == chunkEnd_; }
  char nextChar();
  void skipChar();
  void backChar();

  // What is left of the chunk, for readers that take many bytes at once, and the step past them.
  [[nodiscard]] std::string_view remaining() const {
    return {cursor_, static_cast<std::size_t>(chunkEnd_ - cursor_)};
  }
  void advance(std::size_t count) { cursor_ += count; }

  // For the first read from the current file after a token: the white-space byte that ended the token
  // belongs to it and is skipped; carriage return and line feed count as one, also when a chunk ends
  // between them. Calling it again does no more.
  void skipTokenDelimiter();

  // Steps over a line end at the cursor: carriage return, line feed, or both, as above.
  // REQUIRES: one of them is the next byte.
  void skipLineEnd();

 private:
  enum class State { kNormal, kComment, kLiteralString, kHexString, kAscii85String, kLiteralName };

  Ref<PostscriptObject> wholeWord();
  Ref<PostscriptObject> executableWord(std::string_view text);

  [[nodiscard]] static DelimiterSet delimitersOf(State state);
  bool gather();
  bool scan(DelimiterSet delimiters);
  [[nodiscard]] const char* findDelimiter(const char* from, DelimiterSet delimiters) const;
  Ref<PostscriptObject> finishGathered();

  Ref<PostscriptObject> inNormal();
  Ref<PostscriptObject> inComment();
  Ref<PostscriptObject> inLiteralString();
  Ref<PostscriptObject> inEscape();
  Ref<PostscriptObject> inHexString();
  Ref<PostscriptObject> inAscii85String();
  Ref<PostscriptObject> inLiteralName();

  Ref<PostscriptObject> openToken(char delimiter);
  void endEscapeWith(std::string_view bytes);
  Ref<PostscriptObject> takeString(std::size_t skippedBytes, std::string_view decodeFilter);
  void endToken();

  const char* cursor_ = "";
  const char* chunkStart_ = cursor_;
  const char* chunkEnd_ = cursor_;
  std::string tokenText_;  // what is kept of the token in progress
  char stopCharacter_ = 0;
  bool escapePending_ = false;
  std::string escapeText_;
  const MemorySet& memory_;
  const DictionarySet& dictionaries_;
  State state_ = State::kNormal;
  int parenthesisDepth_ = 0;
  RecentNames recentNames_;
  bool delimiterPending_ = false;  // the cursor stands on the white-space byte that ended the last token
  bool lineFeedPending_ = false;   // a carriage return ended the chunk; a line feed may belong to it
};

}  // namespace quillpress
