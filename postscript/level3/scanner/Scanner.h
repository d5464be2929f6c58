#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/level3/objects/VirtualMemory.h"
#include "postscript/level3/scanner/CharacterTable.h"
#include "postscript/level3/scanner/ScanInput.h"

namespace quillpress::level3 {

// Makes objects of the language out of bytes: text tokens, binary tokens and object sequences.
//
// A procedure comes as one object, however deep it nests; the parts of unfinished ones are kept in a list,
// not on the C++ stack. Reading may run procedures of the job (a filter's source), which may scan in turn.
class Scanner final : public Roots {
 public:
  // Receives comments that begin with "%%" or "%!", without their line end.
  using CommentListener = std::function<void(std::string_view comment)>;

  explicit Scanner(VirtualMemory& memory);
  ~Scanner();
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;

  // The next object; false at the end. One white-space character (or a carriage return with its line feed)
  // behind a name or number is consumed with it. Throws syntaxerror, limitcheck, undefined, VMerror, and
  // ioerror when the source fails.
  bool scan(ByteSource& source, Object& token, bool reportsComments = false);

  // Whether the object that came last was a binary object sequence, which is executed when it is met.
  [[nodiscard]] bool wasSequence() const { return isSequence_; }

  void listenToComments(CommentListener listener) { commentListener_ = std::move(listener); }

  // Whether procedures are made as packed arrays.
  [[nodiscard]] bool isPacking() const { return isPacking_; }
  void setPacking(bool isPacking) { isPacking_ = isPacking; }

  // 0: bytes from 128 to 159 are characters of names; otherwise they begin binary tokens.
  [[nodiscard]] int objectFormat() const { return objectFormat_; }
  void setObjectFormat(int format) { objectFormat_ = format; }

  // The names that binary tokens call by number.
  void setSystemName(std::size_t index, Name* name);
  void setUserName(std::size_t index, Name* name);

  void trace(Tracer& tracer) const override;

 private:
  friend class BinaryTokens;

  enum class Kind { kObject, kEnd, kOpenBrace, kCloseBrace };

  Kind next(ScanInput& input, Object& token);
  void scanProcedure(ScanInput& input, Object& token);
  Object closeProcedure(std::size_t start);
  // Whether a name or number goes on with the byte. It ends where a binary token begins.
  [[nodiscard]] bool isRegular(Byte byte) const {
    const CharacterKind kind = kCharacterKinds[byte];
    return kind == CharacterKind::kRegular || (kind == CharacterKind::kBinaryToken && objectFormat_ == 0);
  }
  void skipComment(ScanInput& input);
  void reportComment(ScanInput& input);
  const Byte* shortToken(const Byte* start, const Byte* limit, Object& token) const;
  Object readRegular(ScanInput& input);
  Object regularToken(std::string_view text);
  // The regular characters ahead; in `text_` when they cross the end of a block.
  std::string_view readCharacters(ScanInput& input);
  void skipSpaceBehind(ScanInput& input);
  Object readName(ScanInput& input);
  Object readString(ScanInput& input);
  static std::string_view takePlain(ScanInput& input);
  void appendPlain(ScanInput& input);
  void readEscape(ScanInput& input);
  Object readAngle(ScanInput& input);
  Object readHexString(ScanInput& input);
  Object readBase85String(ScanInput& input);
  void append(int byte);

  VirtualMemory& memory_;
  CommentListener commentListener_;
  bool reportsComments_ = false;
  bool isSequence_ = false;
  bool isPacking_ = false;
  int objectFormat_;
  Name* openBracket_;
  Name* closeBracket_;
  Name* openDictionary_;
  Name* closeDictionary_;
  std::string text_;                 // the string or name being read
  std::vector<Object> parts_;        // elements of unfinished procedures
  std::vector<std::size_t> starts_;  // where each of them begins in parts_
  std::vector<Name*> systemNames_;
  std::vector<Name*> userNames_;
};

}  // namespace quillpress::level3
