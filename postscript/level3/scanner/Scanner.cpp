#include "postscript/level3/scanner/Scanner.h"

#include "postscript/level3/scanner/Base85.h"
#include "postscript/level3/scanner/BinaryTokens.h"
#include "postscript/level3/scanner/Number.h"

namespace quillpress::level3 {

namespace {

// Numbers are written high byte first in text that is sent by other machines, so binary tokens are on from
// the start.
constexpr int kFirstObjectFormat = 2;

constexpr std::string_view kInString = "a string";

// Takes an unfinished procedure's parts away again when an error ends it.
template <typename T>
class Shrink {
 public:
  explicit Shrink(std::vector<T>& list) : list_(list), size_(list.size()) {}
  ~Shrink() { list_.resize(size_); }
  Shrink(const Shrink&) = delete;
  Shrink& operator=(const Shrink&) = delete;

 private:
  std::vector<T>& list_;
  std::size_t size_;
};

// Far beyond what a program can mean, and few enough that a tree so deep can be walked and printed.
constexpr std::size_t kDeepestNesting = 100'000;

[[noreturn]] void endsWithin(ScanInput& input, std::string_view what) {
  input.endedWithin(what);
  raise(ErrorName::kSyntaxError);
}

// As many bytes as stand in the block without anything between their digits: fonts come that way.
void appendHexBytes(ScanInput& input, std::string& text) {
  constexpr std::size_t kRoom = 512;
  char bytes[kRoom];
  std::size_t count = kRoom;
  const Byte* place = input.cursor();
  const Byte* const limit = input.limit();
  while (count == kRoom) {
    for (count = 0; count < kRoom && limit - place >= 2; ++count, place += 2) {
      const unsigned high = kDigitValues[place[0]];
      const unsigned low = kDigitValues[place[1]];
      if ((high | low) >= 16) break;
      bytes[count] = static_cast<char>(high << 4 | low);
    }
    if (text.size() + count > Object::kMaxLength) raise(ErrorName::kLimitCheck);
    text.append(bytes, count);
  }
  input.advanceTo(place);
}

}  // namespace

Scanner::Scanner(VirtualMemory& memory)
    : memory_(memory),
      objectFormat_(kFirstObjectFormat),
      openBracket_(memory.name("[")),
      closeBracket_(memory.name("]")),
      openDictionary_(memory.name("<<")),
      closeDictionary_(memory.name(">>")) {
  memory_.addRoots(this);
}

Scanner::~Scanner() {
  memory_.removeRoots(this);
}

void Scanner::trace(Tracer& tracer) const {
  tracer.visit(parts_);
  for (Name* name : userNames_) {
    if (name != nullptr) name->isMarked = true;
  }
}

void Scanner::setSystemName(std::size_t index, Name* name) {
  if (index >= systemNames_.size()) systemNames_.resize(index + 1, nullptr);
  systemNames_[index] = name;
}

void Scanner::setUserName(std::size_t index, Name* name) {
  if (index >= userNames_.size()) userNames_.resize(index + 1, nullptr);
  userNames_[index] = name;
}

bool Scanner::scan(ByteSource& source, Object& token, bool reportsComments) {
  reportsComments_ = reportsComments && commentListener_ != nullptr;
  isSequence_ = false;
  const Bytes block = source.peek();
  if (const Byte* const end = shortToken(block.data(), block.data() + block.size(), token)) {
    source.consume(static_cast<std::size_t>(end - block.data()));
    return true;
  }
  ScanInput input(source);
  switch (next(input, token)) {
    case Kind::kObject:
      return true;
    case Kind::kEnd:
      if (source.hasFailed()) raise(ErrorName::kIoError);
      return false;
    case Kind::kCloseBrace:
      raise(ErrorName::kSyntaxError);
    case Kind::kOpenBrace:
      break;
  }
  const Shrink<Object> parts(parts_);
  const Shrink<std::size_t> starts(starts_);
  scanProcedure(input, token);
  isSequence_ = false;
  return true;
}

// A procedure whose opening brace has been read.
void Scanner::scanProcedure(ScanInput& input, Object& token) {
  const std::size_t outermost = starts_.size();
  starts_.push_back(parts_.size());
  while (starts_.size() > outermost) {
    Object part;
    switch (next(input, part)) {
      case Kind::kObject:
        if (parts_.size() >= Object::kMaxLength) raise(ErrorName::kLimitCheck);
        parts_.push_back(part);
        break;
      case Kind::kOpenBrace:
        if (starts_.size() >= kDeepestNesting) raise(ErrorName::kLimitCheck);
        starts_.push_back(parts_.size());
        break;
      case Kind::kCloseBrace: {
        const std::size_t start = starts_.back();
        part = closeProcedure(start);
        parts_.resize(start);
        parts_.push_back(part);
        starts_.pop_back();
        break;
      }
      case Kind::kEnd:
        endsWithin(input, "a procedure");
    }
  }
  token = parts_.back();
}

Object Scanner::closeProcedure(std::size_t start) {
  const std::span<const Object> elements = std::span(parts_).subspan(start);
  return (isPacking_ ? memory_.newPackedArray(elements) : memory_.newArray(elements)).asExecutable();
}

Scanner::Kind Scanner::next(ScanInput& input, Object& token) {
  for (;;) {
    const int byte = input.peek();
    switch (byte) {
      case ScanInput::kEnd:
        return Kind::kEnd;
      case '\0':
      case '\t':
      case '\n':
      case '\f':
      case '\r':
      case ' ':
        input.skip();
        continue;
      case '%':
        skipComment(input);
        continue;
      case '{':
        input.skip();
        return Kind::kOpenBrace;
      case '}':
        input.skip();
        return Kind::kCloseBrace;
      case '/':
        input.skip();
        token = readName(input);
        return Kind::kObject;
      case '(':
        input.skip();
        token = readString(input);
        return Kind::kObject;
      case '<':
        input.skip();
        token = readAngle(input);
        return Kind::kObject;
      case '>':
        input.skip();
        if (input.peek() != '>') raise(ErrorName::kSyntaxError);
        input.skip();
        token = Object::executableName(closeDictionary_);
        return Kind::kObject;
      case '[':
        input.skip();
        token = Object::executableName(openBracket_);
        return Kind::kObject;
      case ']':
        input.skip();
        token = Object::executableName(closeBracket_);
        return Kind::kObject;
      case ')':
        input.skip();
        raise(ErrorName::kSyntaxError);
      default:
        if (isRegular(static_cast<Byte>(byte))) {
          token = readRegular(input);
        } else {
          token = BinaryTokens(*this, input).read();
        }
        return Kind::kObject;
    }
  }
}

void Scanner::skipComment(ScanInput& input) {
  input.skip();
  const int second = input.peek();
  if (reportsComments_ && (second == '%' || second == '!')) return reportComment(input);
  for (int byte = second; byte != ScanInput::kEnd && byte != '\n' && byte != '\r' && byte != '\f';
       byte = input.peek()) {
    input.skip();
  }
}

void Scanner::reportComment(ScanInput& input) {
  constexpr std::size_t kLongest = 4096;
  std::string comment = "%";
  for (int byte = input.peek(); byte != ScanInput::kEnd && byte != '\n' && byte != '\r';
       byte = input.peek()) {
    if (comment.size() < kLongest) comment.push_back(static_cast<char>(byte));
    input.skip();
  }
  commentListener_(comment);
}

// Most tokens are integers, and names of one character that were there before, and lie whole in the block
// with one space behind them. Where such a one ends, and that space; null for all others.
const Byte* Scanner::shortToken(const Byte* start, const Byte* limit, Object& token) const {
  constexpr std::ptrdiff_t kMostDigits = 18;
  const Byte* place = start;
  std::int64_t value = 0;
  while (place != limit && static_cast<Byte>(*place - '0') < 10 && place - start < kMostDigits) {
    value = value * 10 + (*place - '0');
    ++place;
  }
  const bool isInteger = place != start;
  if (!isInteger && place != limit && isRegular(*place)) ++place;
  if (place == start || place == limit || isRegular(*place) || *place == '\r') return nullptr;
  if (isInteger) {
    token = Object::integer(value);
  } else {
    Name* const name = memory_.names().known(*start);
    if (name == nullptr) return nullptr;
    token = Object::executableName(name);
  }
  return isSpace(*place) ? place + 1 : place;
}

Object Scanner::readRegular(ScanInput& input) {
  Object token;
  if (const Byte* const end = shortToken(input.cursor(), input.limit(), token)) {
    input.advanceTo(end);
    return token;
  }
  token = regularToken(readCharacters(input));
  skipSpaceBehind(input);
  return token;
}

Object Scanner::regularToken(std::string_view text) {
  // Numbers begin with a digit, a sign or a point: everything below '0', and the digits.
  if (static_cast<unsigned char>(text.front()) <= '9') {
    if (const auto number = parseNumber(text)) return *number;
  }
  return Object::executableName(memory_.internName(text));
}

std::string_view Scanner::readCharacters(ScanInput& input) {
  const Byte* const start = input.cursor();
  const Byte* place = start;
  const Byte* const limit = input.limit();
  while (place != limit && isRegular(*place)) ++place;
  input.advanceTo(place);
  const std::string_view text(reinterpret_cast<const char*>(start), static_cast<std::size_t>(place - start));
  if (place != limit) return text;
  text_.assign(text);
  for (int byte = input.peek(); byte != ScanInput::kEnd && isRegular(static_cast<Byte>(byte));
       byte = input.peek()) {
    append(byte);
    input.skip();
  }
  return text_;
}

void Scanner::skipSpaceBehind(ScanInput& input) {
  const int byte = input.peek();
  if (byte == ScanInput::kEnd || !isSpace(static_cast<Byte>(byte))) return;
  input.skip();
  if (byte == '\r' && input.peek() == '\n') input.skip();
}

// Behind a slash; a second one asks for the value that the name has now.
Object Scanner::readName(ScanInput& input) {
  const bool isImmediate = input.peek() == '/';
  if (isImmediate) input.skip();
  Name* const name = memory_.internName(readCharacters(input));
  skipSpaceBehind(input);
  if (!isImmediate) return Object::literalName(name);
  const Object* const value = memory_.dictionaryStack().find(name);
  if (value == nullptr) throw PostscriptError{ErrorName::kUndefined, name};
  return *value;
}

// What stands in the block up to the first character that means something within a string. Borrowed.
std::string_view Scanner::takePlain(ScanInput& input) {
  const Byte* const start = input.cursor();
  const Byte* place = start;
  while (place != input.limit() && *place != '(' && *place != ')' && *place != '\\' && *place != '\r')
    ++place;
  input.advanceTo(place);
  return {reinterpret_cast<const char*>(start), static_cast<std::size_t>(place - start)};
}

void Scanner::appendPlain(ScanInput& input) {
  const std::string_view plain = takePlain(input);
  if (text_.size() + plain.size() > Object::kMaxLength) raise(ErrorName::kLimitCheck);
  text_.append(plain);
}

Object Scanner::readString(ScanInput& input) {
  const std::string_view plain = takePlain(input);
  // Most strings are that alone.
  if (input.cursor() != input.limit() && *input.cursor() == ')') {
    input.skip();
    return memory_.newString(plain);
  }
  if (plain.size() > Object::kMaxLength) raise(ErrorName::kLimitCheck);
  text_.assign(plain);
  int depth = 1;
  for (;;) {
    appendPlain(input);
    const int byte = input.get();
    switch (byte) {
      case ScanInput::kEnd:
        endsWithin(input, kInString);
      case '(':
        ++depth;
        append(byte);
        break;
      case ')':
        if (--depth == 0) return memory_.newString(std::string_view(text_));
        append(byte);
        break;
      case '\\':
        readEscape(input);
        break;
      case '\r':
        // Every line end within a string is a line feed.
        if (input.peek() == '\n') input.skip();
        append('\n');
        break;
      default:
        append(byte);
    }
  }
}

// Behind a backslash. An escape that says nothing stands for its character.
void Scanner::readEscape(ScanInput& input) {
  const int byte = input.get();
  switch (byte) {
    case ScanInput::kEnd:
      endsWithin(input, kInString);
    case 'n':
      return append('\n');
    case 'r':
      return append('\r');
    case 't':
      return append('\t');
    case 'b':
      return append('\b');
    case 'f':
      return append('\f');
    case '\n':
      return;
    case '\r':
      if (input.peek() == '\n') input.skip();
      return;
    default:
      break;
  }
  if (byte < '0' || byte > '7') return append(byte);
  int code = byte - '0';
  for (int digits = 1; digits < 3; ++digits) {
    const int digit = input.peek();
    if (digit < '0' || digit > '7') break;
    code = code * 8 + (digit - '0');
    input.skip();
  }
  append(code & 0xff);
}

// Behind "<".
Object Scanner::readAngle(ScanInput& input) {
  const int byte = input.peek();
  if (byte == '<') {
    input.skip();
    return Object::executableName(openDictionary_);
  }
  if (byte != '~') return readHexString(input);
  input.skip();
  return readBase85String(input);
}

Object Scanner::readHexString(ScanInput& input) {
  text_.clear();
  int high = -1;
  for (;;) {
    if (high < 0) appendHexBytes(input, text_);
    const int byte = input.get();
    if (byte == ScanInput::kEnd) endsWithin(input, kInString);
    if (byte == '>') break;
    if (isSpace(static_cast<Byte>(byte))) continue;
    const std::uint8_t digit = kDigitValues[static_cast<std::size_t>(byte)];
    if (digit >= 16) raise(ErrorName::kSyntaxError);
    if (high < 0) {
      high = digit;
    } else {
      append(high * 16 + digit);
      high = -1;
    }
  }
  // A missing last digit is a 0.
  if (high >= 0) append(high * 16);
  return memory_.newString(std::string_view(text_));
}

Object Scanner::readBase85String(ScanInput& input) {
  Base85 decoder;
  text_.clear();
  for (;;) {
    const int byte = input.get();
    if (byte == ScanInput::kEnd) endsWithin(input, kInString);
    if (byte == '~') break;
    if (isSpace(static_cast<Byte>(byte))) continue;
    if (!decoder.take(static_cast<Byte>(byte), text_)) raise(ErrorName::kSyntaxError);
  }
  if (input.get() != '>' || !decoder.finish(text_)) raise(ErrorName::kSyntaxError);
  return memory_.newString(std::string_view(text_));
}

void Scanner::append(int byte) {
  if (text_.size() >= Object::kMaxLength) raise(ErrorName::kLimitCheck);
  text_.push_back(static_cast<char>(byte));
}

}  // namespace quillpress::level3
