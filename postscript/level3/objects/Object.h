#pragma once

#include <cstdint>
#include <type_traits>

namespace quillpress::level3 {

struct Name;
struct Operator;
class Dictionary;
class Storage;
class StringStorage;
class ArrayStorage;
class ForeignStorage;

enum class Type : std::uint8_t {
  kNull,
  kInteger,
  kReal,
  kBoolean,
  kMark,
  kName,
  kOperator,
  kString,
  kArray,
  kPackedArray,
  kDictionary,
  kFile,
  kSave,
  kFontId,
  kGState,
};

// What may be done with a composite object. A dictionary's access is kept with its contents, not here.
enum class Access : std::uint8_t { kUnlimited, kReadOnly, kExecuteOnly, kNone };

// A value of the language, passed by copy: type, attributes, and either the value itself or a pointer to
// storage that the virtual memory owns. Numbers, names, booleans and operators need no storage.
//
// Strings and arrays are windows into their storage: an offset of 24 bits beside the tag, and a length.
class Object {
 public:
  // The largest string and array. A larger one is a limitcheck.
  static constexpr std::uint32_t kMaxLength = (1U << 24) - 1;

  // Type and executable flag in one number, for a switch.
  using Tag = std::uint32_t;
  static constexpr Tag kExecutable = 0x10;
  static constexpr Tag literal(Type type) { return static_cast<Tag>(type); }
  static constexpr Tag executable(Type type) { return static_cast<Tag>(type) | kExecutable; }

  constexpr Object() = default;  // null

  static constexpr Object null() { return {}; }
  static constexpr Object mark() { return Object(literal(Type::kMark), 0, std::int64_t{0}); }
  static constexpr Object integer(std::int64_t value) { return Object(literal(Type::kInteger), 0, value); }
  static constexpr Object real(float value) { return Object(literal(Type::kReal), 0, value); }
  static constexpr Object boolean(bool value) {
    return Object(literal(Type::kBoolean), 0, std::int64_t{value});
  }
  static constexpr Object literalName(Name* name) { return Object(literal(Type::kName), 0, name); }
  static constexpr Object executableName(Name* name) { return Object(executable(Type::kName), 0, name); }
  static constexpr Object operatorOf(const Operator* entry) {
    return Object(executable(Type::kOperator), 0, entry);
  }
  static constexpr Object save(std::uint32_t serial) {
    return Object(literal(Type::kSave), 0, std::int64_t{serial});
  }
  static constexpr Object fontId(std::int64_t number) { return Object(literal(Type::kFontId), 0, number); }
  static constexpr Object string(StringStorage* storage, std::uint32_t length) {
    return Object(literal(Type::kString), length, storage);
  }
  static constexpr Object array(ArrayStorage* storage, std::uint32_t length) {
    return Object(literal(Type::kArray), length, storage);
  }
  static constexpr Object procedure(ArrayStorage* storage, std::uint32_t length) {
    return Object(executable(Type::kArray), length, storage);
  }
  static Object packedArray(ArrayStorage* storage, std::uint32_t length) {
    return Object(literal(Type::kPackedArray), length, storage).withAccess(Access::kReadOnly);
  }
  static constexpr Object dictionary(Dictionary* dictionary) {
    return Object(literal(Type::kDictionary), 0, dictionary);
  }
  // A file or graphics state, whose contents other folders know.
  static constexpr Object foreign(Type type, ForeignStorage* storage) {
    return Object(literal(type), 0, storage);
  }

  [[nodiscard]] Type type() const { return static_cast<Type>(word_ & 0xf); }
  [[nodiscard]] Tag tag() const { return word_ & 0x1f; }
  [[nodiscard]] bool is(Type type) const { return this->type() == type; }
  [[nodiscard]] bool isExecutable() const { return (word_ & kExecutable) != 0; }
  [[nodiscard]] bool isInteger() const { return is(Type::kInteger); }
  [[nodiscard]] bool isReal() const { return is(Type::kReal); }
  [[nodiscard]] bool isNumber() const { return isInteger() || isReal(); }
  [[nodiscard]] bool isName() const { return is(Type::kName); }
  [[nodiscard]] bool isString() const { return is(Type::kString); }
  [[nodiscard]] bool isDictionary() const { return is(Type::kDictionary); }
  [[nodiscard]] bool isNull() const { return is(Type::kNull); }
  [[nodiscard]] bool isMark() const { return is(Type::kMark); }
  [[nodiscard]] bool isFile() const { return is(Type::kFile); }
  // An array, packed or not.
  [[nodiscard]] bool isArray() const { return is(Type::kArray) || is(Type::kPackedArray); }
  [[nodiscard]] bool isProcedure() const { return isArray() && isExecutable(); }
  // The value is a pointer to storage.
  [[nodiscard]] bool isComposite() const { return ((kCompositeTypes >> (word_ & 0xf)) & 1) != 0; }

  [[nodiscard]] Access access() const { return static_cast<Access>((word_ >> kAccessShift) & 3); }
  [[nodiscard]] bool isReadable() const { return access() <= Access::kReadOnly; }
  [[nodiscard]] bool isWritable() const { return access() == Access::kUnlimited; }

  // REQUIRES of the readers below: the type that their name says.
  [[nodiscard]] std::int64_t asInteger() const { return value_.integer; }
  [[nodiscard]] float asReal() const { return value_.real; }
  [[nodiscard]] bool asBoolean() const { return value_.integer != 0; }
  [[nodiscard]] Name* asName() const { return value_.name; }
  [[nodiscard]] const Operator* asOperator() const { return value_.entry; }
  [[nodiscard]] std::uint32_t asSave() const { return static_cast<std::uint32_t>(value_.integer); }
  [[nodiscard]] Dictionary* asDictionary() const { return value_.dictionary; }
  [[nodiscard]] StringStorage* stringStorage() const { return value_.string; }
  [[nodiscard]] ArrayStorage* arrayStorage() const { return value_.array; }
  [[nodiscard]] ForeignStorage* foreignStorage() const { return value_.foreign; }
  // Integer or real.
  [[nodiscard]] double asNumber() const {
    return isInteger() ? static_cast<double>(value_.integer) : static_cast<double>(value_.real);
  }
  // REQUIRES: isComposite()
  [[nodiscard]] inline Storage* storage() const;

  // Of a string or array.
  [[nodiscard]] std::uint32_t length() const { return length_; }
  [[nodiscard]] std::uint32_t offset() const { return word_ >> kOffsetShift; }
  [[nodiscard]] inline std::uint8_t* bytes() const;
  [[nodiscard]] inline Object* elements() const;

  // The same object with another attribute.
  [[nodiscard]] Object asExecutable() const { return withWord(word_ | kExecutable); }
  [[nodiscard]] Object asLiteral() const { return withWord(word_ & ~kExecutable); }
  [[nodiscard]] Object withAccess(Access access) const {
    return withWord((word_ & ~kAccessMask) | (static_cast<std::uint32_t>(access) << kAccessShift));
  }
  // REQUIRES: a string or array, start + count <= length()
  [[nodiscard]] Object interval(std::uint32_t start, std::uint32_t count) const {
    Object part = withWord(word_ + (start << kOffsetShift));
    part.length_ = count;
    return part;
  }

  // Same type, attributes and value or storage.
  [[nodiscard]] bool isIdenticalTo(const Object& other) const {
    return word_ == other.word_ && length_ == other.length_ && value_.integer == other.value_.integer;
  }

 private:
  static constexpr std::uint32_t kAccessShift = 5;
  static constexpr std::uint32_t kAccessMask = 3U << kAccessShift;
  static constexpr std::uint32_t kOffsetShift = 8;
  static constexpr std::uint32_t kCompositeTypes =
      (1U << static_cast<unsigned>(Type::kString)) | (1U << static_cast<unsigned>(Type::kArray)) |
      (1U << static_cast<unsigned>(Type::kPackedArray)) | (1U << static_cast<unsigned>(Type::kDictionary)) |
      (1U << static_cast<unsigned>(Type::kFile)) | (1U << static_cast<unsigned>(Type::kGState));

  union Value {
    std::int64_t integer = 0;
    float real;
    Name* name;
    const Operator* entry;
    Dictionary* dictionary;
    StringStorage* string;
    ArrayStorage* array;
    ForeignStorage* foreign;

    constexpr Value() = default;
    constexpr explicit Value(std::int64_t v) : integer(v) {}
    constexpr explicit Value(float v) : real(v) {}
    constexpr explicit Value(Name* v) : name(v) {}
    constexpr explicit Value(const Operator* v) : entry(v) {}
    constexpr explicit Value(Dictionary* v) : dictionary(v) {}
    constexpr explicit Value(StringStorage* v) : string(v) {}
    constexpr explicit Value(ArrayStorage* v) : array(v) {}
    constexpr explicit Value(ForeignStorage* v) : foreign(v) {}
  };

  template <typename T>
  constexpr Object(std::uint32_t word, std::uint32_t length, T value)
      : word_(word), length_(length), value_(value) {}

  [[nodiscard]] Object withWord(std::uint32_t word) const {
    Object changed = *this;
    changed.word_ = word;
    return changed;
  }

  std::uint32_t word_ = 0;  // type 4 bits, executable 1, access 2, spare 1, offset 24
  std::uint32_t length_ = 0;
  Value value_;
};

static_assert(sizeof(Object) == 16);
static_assert(std::is_trivially_copyable_v<Object>);

}  // namespace quillpress::level3
