#pragma once

#include <quillpress/converter.h>

#include <deque>
#include <string>
#include <vector>

namespace quillpress::cli {

// A list of objects as the converter returns it, put together by a test.
class Records {
 public:
  void addImage(const std::string& dictionary, const std::string& data, bool compress = true) {
    add(PDF_OBJECT_IMAGE, "/PSI", dictionary, data, compress);
  }

  void addPattern(const std::string& dictionary, const std::string& content) {
    add(PDF_OBJECT_PATTERN, "/PA", dictionary, content, true);
  }

  [[nodiscard]] const std::vector<const PdfObject*>& list() const { return list_; }

 private:
  void add(int kind, const char* prefix, const std::string& dictionary, const std::string& data,
           bool compress) {
    std::string& name = texts_.emplace_back(prefix + std::to_string(list_.size() + 1));
    std::string& record = texts_.emplace_back(dictionary);
    std::string& bytes = texts_.emplace_back(data);
    PdfObject& object = objects_.emplace_back();
    object.dictionary = record.data();
    object.compress = compress ? 1 : 0;
    object.data = bytes.data();
    object.dataLength = static_cast<std::uint32_t>(bytes.size());
    object.name = name.data();
    object.kind = kind;
    list_.push_back(&object);
  }

  // Both keep what they hold in its place while they grow.
  std::deque<std::string> texts_;
  std::deque<PdfObject> objects_;
  std::vector<const PdfObject*> list_;
};

inline const std::string kGrayImage =
    "/Type /XObject /Subtype /Image /Width 2 /Height 2 /ColorSpace /DeviceGray /BitsPerComponent 8";
inline const std::string kCell =
    "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 8 8] /XStep 8 /YStep 8";

}  // namespace quillpress::cli
