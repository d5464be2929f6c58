#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/lib/objects/CompositeObject.h"

namespace quillpress {

// The bytes that handles on a string share. A hex or ASCII85 string of the program keeps its text as
// read, with the names of its decode filters, so that images can pass it on undecoded.
class StringData final : public CompositeData {
 public:
  explicit StringData(std::string text) : CompositeData(TypeCode::kString), contents_(std::move(text)) {}

  // The text as held: still encoded when there are decode filters.
  [[nodiscard]] const std::string& asHeld() const { return contents_; }

  // The decoded bytes, which is what the language sees. Decoding is done once, on first need.
  [[nodiscard]] const std::string& bytes() const;

  // The decoded bytes for writing. From then on the string is plain.
  [[nodiscard]] std::string& writableBytes();

  [[nodiscard]] const std::vector<std::string>& decodeFilters() const;
  void addDecodeFilter(std::string name);

 private:
  struct Encoding {
    std::vector<std::string> filters;
    std::unique_ptr<const std::string> decoded;  // on first need
  };

  std::string contents_;
  std::unique_ptr<Encoding> encoding_;  // none for most strings
};

// A handle on a string.
class StringObject final : public CompositeObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kString;

  // A literal string of the text's bytes.
  StringObject(VirtualMemoryObject& memoryArea, std::string text);

  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] std::string cvsString() const override;  // up to the first zero byte
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  [[nodiscard]] StringData& data() const { return static_cast<StringData&>(payload()); }
  [[nodiscard]] const std::string& bytes() const { return data().bytes(); }
  [[nodiscard]] std::size_t length() const { return bytes().size(); }

  // Stores one byte; at the index just past the end it lands nowhere. Throws Ex for any other index outside.
  void put(std::ptrdiff_t index, char byte);

 private:
  StringObject(const StringObject& other) = default;
};

}  // namespace quillpress
