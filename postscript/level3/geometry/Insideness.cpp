#include "postscript/level3/geometry/Insideness.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "postscript/level3/geometry/Flattening.h"
#include "postscript/level3/geometry/Polylines.h"

namespace quillpress::level3 {

namespace {

constexpr double kFlatness = 0.25;

struct Edge {
  Point from;
  Point to;
};

// The sides of all subpaths, each closed as filling closes it.
std::vector<Edge> edgesOf(const Path& path) {
  std::vector<Edge> edges;
  for (const Polyline& line : polylinesOf(flattened(path, kFlatness))) {
    const std::size_t count = line.points.size();
    for (std::size_t index = 0; index < count; ++index) {
      edges.push_back({line.points[index], line.points[(index + 1) % count]});
    }
  }
  return edges;
}

bool isInside(const std::vector<Edge>& edges, FillRule rule, Point point) {
  int winding = 0;
  for (const Edge& edge : edges) {
    if ((edge.from.y <= point.y) == (edge.to.y <= point.y)) continue;
    const double side = cross(edge.to - edge.from, point - edge.from);
    const bool isUpwards = edge.to.y > edge.from.y;
    if (isUpwards == (side > 0)) winding += isUpwards ? 1 : -1;
  }
  return rule == FillRule::kNonzero ? winding != 0 : winding % 2 != 0;
}

int sideOf(const Edge& edge, Point point) {
  const double side = cross(edge.to - edge.from, point - edge.from);
  return side > 0 ? 1 : (side < 0 ? -1 : 0);
}

bool meet(const Edge& one, const Edge& other) {
  if (!Box::ofCorners(one.from, one.to).touches(Box::ofCorners(other.from, other.to))) return false;
  return sideOf(one, other.from) * sideOf(one, other.to) <= 0 &&
         sideOf(other, one.from) * sideOf(other, one.to) <= 0;
}

bool anyMeet(const std::vector<Edge>& edges, const std::vector<Edge>& others) {
  for (const Edge& edge : edges) {
    for (const Edge& other : others) {
      if (meet(edge, other)) return true;
    }
  }
  return false;
}

bool overlap(const std::vector<Edge>& edges, FillRule rule, const std::vector<Edge>& aperture) {
  if (edges.empty() || aperture.empty()) return false;
  if (anyMeet(edges, aperture)) return true;
  return isInside(edges, rule, aperture[0].from) || isInside(aperture, FillRule::kNonzero, edges[0].from);
}

}  // namespace

bool paintsPixelAt(const Path& path, FillRule rule, Point point) {
  const std::vector<Edge> edges = edgesOf(path);
  if (isInside(edges, rule, point)) return true;
  Path pixel;
  const Point corner{std::floor(point.x), std::floor(point.y)};
  pixel.appendRectangle(Box::ofCorners(corner, corner + Point{1, 1}));
  return anyMeet(edges, edgesOf(pixel));
}

bool paintsInside(const Path& path, FillRule rule, const Path& aperture) {
  return overlap(edgesOf(path), rule, edgesOf(aperture));
}

}  // namespace quillpress::level3
