#include "tests/level3/fonts/FreeTypeFont.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include FT_OUTLINE_H

namespace quillpress::level3::testing {

namespace {

Point pointOf(const FT_Vector& vector) {
  return {static_cast<double>(vector.x), static_cast<double>(vector.y)};
}

Path& pathOf(void* user) {
  return *static_cast<Path*>(user);
}

int addMove(const FT_Vector* to, void* user) {
  pathOf(user).close();
  pathOf(user).moveTo(pointOf(*to));
  return 0;
}

int addLine(const FT_Vector* to, void* user) {
  pathOf(user).lineTo(pointOf(*to));
  return 0;
}

int addConic(const FT_Vector* control, const FT_Vector* to, void* user) {
  const Point begin = *pathOf(user).currentPoint();
  const Point middle = pointOf(*control);
  const Point end = pointOf(*to);
  pathOf(user).curveTo(between(begin, middle, 2.0 / 3), between(end, middle, 2.0 / 3), end);
  return 0;
}

int addCubic(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* user) {
  pathOf(user).curveTo(pointOf(*control1), pointOf(*control2), pointOf(*to));
  return 0;
}

}  // namespace

FreeTypeFont::FreeTypeFont(std::string bytes) : bytes_(std::move(bytes)) {
  FT_Init_FreeType(&library_);
  const auto* data = reinterpret_cast<const FT_Byte*>(bytes_.data());
  if (FT_New_Memory_Face(library_, data, static_cast<FT_Long>(bytes_.size()), 0, &face_) != 0)
    face_ = nullptr;
}

FreeTypeFont::~FreeTypeFont() {
  if (face_ != nullptr) FT_Done_Face(face_);
  FT_Done_FreeType(library_);
}

unsigned FreeTypeFont::glyphNamed(const std::string& name) const {
  return FT_Get_Name_Index(face_, name.c_str());
}

unsigned FreeTypeFont::glyphOfCode(FT_Encoding encoding, unsigned long code) const {
  return FT_Select_Charmap(face_, encoding) == 0 ? FT_Get_Char_Index(face_, code) : 0;
}

std::string FreeTypeFont::glyphName(unsigned glyph) const {
  char name[256] = "";
  FT_Get_Glyph_Name(face_, glyph, name, sizeof name);
  return name;
}

std::optional<Path> FreeTypeFont::outline(unsigned glyph) const {
  if (FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING) != 0) return std::nullopt;
  Path path;
  FT_Outline_Funcs functions{addMove, addLine, addConic, addCubic, 0, 0};
  if (FT_Outline_Decompose(&face_->glyph->outline, &functions, &path) != 0) return std::nullopt;
  path.close();
  return path;
}

double FreeTypeFont::advance(unsigned glyph) const {
  FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING);
  return static_cast<double>(face_->glyph->metrics.horiAdvance);
}

std::string bytesOfFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::vector<Point>> contoursOf(const Path& path) {
  std::vector<std::vector<Point>> contours;
  const Point* point = path.points().data();
  for (const SegmentKind kind : path.kinds()) {
    if (kind == SegmentKind::kMove) contours.emplace_back();
    const bool isNothing = kind == SegmentKind::kLine && contours.back().back() == *point;
    for (std::size_t i = 0; i < pointCount(kind); ++i, ++point) {
      if (!isNothing) contours.back().push_back(*point);
    }
  }
  for (std::vector<Point>& contour : contours) {
    while (contour.size() > 1 && length(contour.back() - contour.front()) < 0.9) contour.pop_back();
  }
  std::erase_if(contours, [](const std::vector<Point>& contour) { return contour.size() < 3; });
  return contours;
}

bool areNear(const Path& left, const Path& right, double tolerance) {
  const auto one = contoursOf(left);
  const auto other = contoursOf(right);
  if (one.size() != other.size()) return false;
  for (std::size_t i = 0; i < one.size(); ++i) {
    if (one[i].size() != other[i].size()) return false;
    for (std::size_t j = 0; j < one[i].size(); ++j) {
      if (length(one[i][j] - other[i][j]) > tolerance) return false;
    }
  }
  return true;
}

}  // namespace quillpress::level3::testing
