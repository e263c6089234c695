// How much of each pixel a rounded rectangle covers, row by row; tiles are painted with it. Corners
// have the curve of ContinuousShape, and a smaller radius if there is no space.
//
// Coordinates are pixels of the painted image. The results point into a buffer of the shape, so
// each thread needs its own shape.
#pragma once

#include <cstdint>
#include <vector>

#include "treemap/Rect.h"

namespace tessaly {

class RoundedShape {
 public:
  // One row of pixels. `edges` has the coverage, 0 to 255, of the pixels from begin to solidBegin,
  // followed by the pixels from solidEnd to end; `solid` is that of the pixels between. Valid until
  // the next call of row().
  struct Row {
    int begin = 0;
    int solidBegin = 0;
    int solidEnd = 0;
    int end = 0;
    std::uint8_t solid = 0;
    const std::uint8_t* edges = nullptr;

    std::uint8_t at(int x) const {
      if (x < begin || x >= end) return 0;
      if (x < solidBegin) return edges[x - begin];
      if (x < solidEnd) return solid;
      return edges[x - solidEnd + solidBegin - begin];
    }
  };

  RoundedShape(const Rect& rect, double radius);

  const Rect& rect() const { return rect_; }

  // How far from a corner, along each edge, its curve begins.
  double cornerReach() const { return reach_; }

  // The rows of the shape: from firstRow() up to, but not including, endRow().
  int firstRow() const { return firstRow_; }
  int endRow() const { return endRow_; }

  // The coverage of the pixels in row `y`, empty outside those rows.
  Row row(int y);

 private:
  double insetAt(double fromEdge) const;

  Rect rect_;
  double reach_ = 0;  // how far from the corner the curve begins
  int firstRow_ = 0;
  int endRow_ = 0;
  std::vector<std::uint8_t> edges_;
  Row straight_;  // any row between the corners, which are all equal
  bool straightKnown_ = false;
  std::vector<std::uint8_t> straightEdges_;
};

}  // namespace tessaly
