#include "postscript/lib/interpreter/Parser.h"

#include <algorithm>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/TokenNumbers.h"
#include "postscript/lib/objects/DecodeFilters.h"

namespace quillpress {

// The line end that a chunk cut in two is remembered; the delimiter is not, since it was a byte of the
// old chunk.
void Parser::setInput(const char* start, std::size_t length) {
  cursor_ = start;
  chunkStart_ = start;
  chunkEnd_ = start + length;
  delimiterPending_ = false;
}

// The three that follow are called where the byte was seen before; what they say is for callers that did
// not look.
char Parser::nextChar() {
  if (atEnd()) THROW_EX("Cannot get next char when none left");
  return *cursor_++;
}

void Parser::skipChar() {
  if (atEnd()) THROW_EX("Cannot skip when no chars left");
  ++cursor_;
}

void Parser::backChar() {
  if (cursor_ == chunkStart_) THROW_EX("Cannot go back");
  --cursor_;
}

void Parser::skipTokenDelimiter() {
  if (lineFeedPending_ && !atEnd()) {
    lineFeedPending_ = false;
    if (*cursor_ == '\n') ++cursor_;
  }
  if (!delimiterPending_) return;
  delimiterPending_ = false;
  if (*cursor_ == '\r') {
    skipLineEnd();
  } else {
    ++cursor_;
  }
}

// The line feed of a pair may come with the next chunk only, so it is noted that one may still be due.
void Parser::skipLineEnd() {
  const char first = *cursor_++;
  if (first != '\r') return;
  lineFeedPending_ = true;
  if (atEnd()) return;
  lineFeedPending_ = false;
  if (*cursor_ == '\n') ++cursor_;
}

Ref<PostscriptObject> Parser::nextToken() {
  // A token comes next, and for the tokenizer the delimiter is white space like any other.
  delimiterPending_ = false;
  if (!atEnd()) lineFeedPending_ = false;
  while (true) {
    if (state_ == State::kNormal && tokenText_.empty()) {
      if (auto token = wholeWord()) return token;
    }
    if (!gather()) return nullptr;
    if (auto token = finishGathered()) return token;
  }
}

// The name, number or bracket that comes next, when it lies whole in the chunk: nearly all tokens do, and
// need no state and no copy of their text. Null for everything else, which the states find out.
Ref<PostscriptObject> Parser::wholeWord() {
  while (!atEnd() && isWhiteSpace(*cursor_)) ++cursor_;
  if (atEnd()) return nullptr;
  const bool isLiteral = *cursor_ == '/';
  const char* const start = cursor_ + (isLiteral ? 1 : 0);
  const char* const end = findDelimiter(start, DelimiterSet::kToken);
  if (end == chunkEnd_) return nullptr;
  if (end == start) {
    return isLiteral || !isBracket(*end) ? nullptr : recentNames_.executableName({cursor_++, 1});
  }
  cursor_ = end;
  delimiterPending_ = isWhiteSpace(*end);
  const std::string_view text(start, static_cast<std::size_t>(end - start));
  if (isLiteral) return recentNames_.literalName(text);
  return executableWord(text);
}

Ref<PostscriptObject> Parser::executableWord(std::string_view text) {
  if (auto number = numberFromToken(text, memory_)) return number;
  return recentNames_.executableName(text);
}

const char* Parser::findDelimiter(const char* from, DelimiterSet delimiters) const {
  return std::find_if(from, chunkEnd_, [delimiters](char c) { return isDelimiter(delimiters, c); });
}

// A literal name ends where any other word does; comments end with their line, strings with their own
// brackets.
DelimiterSet Parser::delimitersOf(State state) {
  switch (state) {
    case State::kNormal:
    case State::kLiteralName:
      return DelimiterSet::kToken;
    case State::kComment:
      return DelimiterSet::kComment;
    case State::kLiteralString:
      return DelimiterSet::kLiteralString;
    case State::kHexString:
      return DelimiterSet::kHexString;
    case State::kAscii85String:
      return DelimiterSet::kAscii85String;
  }
  return DelimiterSet::kToken;
}

// Takes in one byte of an escape, or everything up to the next delimiter. False at the chunk's end.
bool Parser::gather() {
  if (!escapePending_) return scan(delimitersOf(state_));
  if (atEnd()) return false;
  // One byte at a time: how long an escape is shows only when its next byte has been read.
  escapeText_.push_back(*cursor_++);
  return true;
}

bool Parser::scan(DelimiterSet delimiters) {
  const char* const runStart = cursor_;
  cursor_ = findDelimiter(cursor_, delimiters);
  // A comment's text is never needed, and may be of any length.
  if (state_ != State::kComment) tokenText_.append(runStart, cursor_);
  if (atEnd()) return false;
  // Left unread: the state that the scan was made for decides whether it belongs to the token.
  stopCharacter_ = *cursor_;
  return true;
}

// Null when nothing is complete yet: the caller gathers on, in the state that was left behind.
Ref<PostscriptObject> Parser::finishGathered() {
  switch (state_) {
    case State::kNormal:
      return inNormal();
    case State::kComment:
      return inComment();
    case State::kLiteralString:
      return escapePending_ ? inEscape() : inLiteralString();
    case State::kHexString:
      return inHexString();
    case State::kAscii85String:
      return inAscii85String();
    case State::kLiteralName:
      return inLiteralName();
  }
  return nullptr;
}

// Back to between tokens. The delimiter, which stays unread, may belong to the token.
void Parser::endToken() {
  tokenText_.clear();
  state_ = State::kNormal;
  delimiterPending_ = isWhiteSpace(stopCharacter_);
}

Ref<PostscriptObject> Parser::inNormal() {
  // Only a delimiter that ends no token is consumed; the one behind a token stays for a reader of the
  // file.
  if (tokenText_.empty()) {
    skipChar();
    return openToken(stopCharacter_);
  }
  Ref<PostscriptObject> token = executableWord(tokenText_);
  endToken();
  return token;
}

Ref<PostscriptObject> Parser::openToken(char delimiter) {
  switch (delimiter) {
    case '/':
      state_ = State::kLiteralName;
      return nullptr;
    case '%':
      state_ = State::kComment;
      return nullptr;
    case '(':
      state_ = State::kLiteralString;
      parenthesisDepth_ = 0;
      return nullptr;
    case '<':
      // Kept: there is no << token; a hex string begins here whatever follows (tokenizer/hex_strings.ps).
      state_ = State::kHexString;
      return nullptr;
    default:  // white space, and a stray ) or >; brackets are whole words
      return nullptr;
  }
}

// Structure comments are for the program that prints; the caller has read them if it wants them.
Ref<PostscriptObject> Parser::inComment() {
  skipChar();
  state_ = State::kNormal;
  return nullptr;
}

Ref<PostscriptObject> Parser::inLiteralName() {
  // The second slash becomes part of the text, which tells such a name from a literal one further down.
  if (tokenText_.empty() && stopCharacter_ == '/') {
    skipChar();
    tokenText_.push_back('/');
    return nullptr;
  }
  if (tokenText_.size() > 1 && tokenText_.front() == '/') {
    Ref<PostscriptObject> value = dictionaries_.lookup(DictionaryKey(std::string_view(tokenText_).substr(1)));
    // Kept: thrown before the text is emptied, so every later call throws again until the name is
    // defined (ParserTest.AnUndefinedImmediatelyEvaluatedNameThrowsWithEveryCall).
    if (!value) THROW_EX("Undefined Immediately Evaluated Name");
    endToken();
    return value;
  }
  auto name = recentNames_.literalName(tokenText_);
  endToken();
  return name;
}

// The string that the token text holds, without some of its first bytes.
Ref<PostscriptObject> Parser::takeString(std::size_t skippedBytes, std::string_view decodeFilter) {
  auto string = memory_.newString(tokenText_.substr(std::min(skippedBytes, tokenText_.size())));
  if (!decodeFilter.empty()) string->data().addDecodeFilter(std::string(decodeFilter));
  tokenText_.clear();
  state_ = State::kNormal;
  return string;
}

// Brackets inside a string must balance, so that a string can hold a program.
Ref<PostscriptObject> Parser::inLiteralString() {
  skipChar();
  switch (stopCharacter_) {
    case ')':
      if (parenthesisDepth_ < 1) return takeString(0, {});
      --parenthesisDepth_;
      tokenText_.push_back(')');
      return nullptr;
    case '(':
      ++parenthesisDepth_;
      tokenText_.push_back('(');
      return nullptr;
    case '\\':
      escapeText_.clear();
      escapePending_ = true;
      return nullptr;
    default:
      THROW_EX("Unexpected separator when parsing for end of literal string");
  }
}

void Parser::endEscapeWith(std::string_view bytes) {
  tokenText_.append(bytes);
  escapePending_ = false;
}

// Judges the escape by what has been read of it after the backslash.
Ref<PostscriptObject> Parser::inEscape() {
  const char first = escapeText_.front();
  const char last = escapeText_.back();
  const bool isLineEnd = first == '\n' || first == '\r';
  if (escapeText_.size() == 1) {
    constexpr std::string_view kLetters = "nrtbf\\()";
    constexpr std::string_view kMeanings = "\n\r\t\b\f\\()";
    const auto letter = kLetters.find(first);
    if (letter != std::string_view::npos) {
      endEscapeWith(kMeanings.substr(letter, 1));
    } else if (!isLineEnd && !isOctalDigit(first)) {
      THROW_EX("Unsupported character escape in string");
    }
  } else if (isLineEnd) {
    // Kept: a carriage return after the line end goes with it, a line feed does not
    // (tokenizer/line_continuations.ps).
    if (last != '\r') backChar();
    endEscapeWith({});
  } else if (!isOctalDigit(first)) {
    THROW_EX("Unsupported character escape in string");  // an earlier error's escape, still unfinished
  } else if (!isOctalDigit(last)) {
    // Kept: an escape of one or two digits yields nothing; its digits are lost (tokenizer/escapes.ps).
    backChar();
    endEscapeWith({});
  } else if (escapeText_.size() == 3) {
    const int value = (escapeText_[0] - '0') * 64 + (escapeText_[1] - '0') * 8 + (last - '0');
    const char byte = static_cast<char>(value & 0xFF);
    endEscapeWith({&byte, 1});
  }
  return nullptr;
}

Ref<PostscriptObject> Parser::inHexString() {
  skipChar();
  // Both kinds begin with <, so they are told apart by what was gathered when the first > comes.
  const bool isAscii85 = !tokenText_.empty() && tokenText_.front() == '~';
  const bool isTerminated = !tokenText_.empty() && tokenText_.back() == '~';
  tokenText_.push_back('>');
  if (!isAscii85) return takeString(0, kAsciiHexDecode);
  if (isTerminated) return takeString(1, kAscii85Decode);
  // From here on the data ends at its tilde, and brackets are digits like others.
  state_ = State::kAscii85String;  // the > is part of ASCII85 data
  return nullptr;
}

// The > that follows the ~ is dropped later, between tokens.
Ref<PostscriptObject> Parser::inAscii85String() {
  skipChar();
  tokenText_.push_back('~');
  return takeString(1, kAscii85Decode);
}

}  // namespace quillpress
