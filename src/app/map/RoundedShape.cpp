#include "app/map/RoundedShape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "app/controls/ContinuousShape.h"

namespace tessaly {
namespace {

constexpr int slices = 4;
constexpr int steps = 256;

// The curve: the distance from one edge for each distance from the other, both relative to the
// reach.
const std::array<float, steps + 1>& curve() {
  static const auto table = [] {
    std::array<float, steps + 1> values{};
    for (int i = 0; i <= steps; ++i) {
      values[static_cast<std::size_t>(i)] =
          static_cast<float>(ContinuousShape::inset(static_cast<double>(i) / steps));
    }
    return values;
  }();
  return table;
}

std::uint8_t toCoverage(double part) {
  return static_cast<std::uint8_t>(std::clamp(part, 0.0, 1.0) * 255 + 0.5);
}

}  // namespace

RoundedShape::RoundedShape(const Rect& rect, double radius) : rect_(rect) {
  rect_.width = std::max(rect_.width, 0.0);
  rect_.height = std::max(rect_.height, 0.0);
  reach_ =
      std::min({ContinuousShape::reach(std::max(radius, 0.0)), rect_.width / 2, rect_.height / 2});
  firstRow_ = static_cast<int>(std::floor(rect_.y));
  endRow_ = static_cast<int>(std::ceil(rect_.y + rect_.height));
}

double RoundedShape::insetAt(double fromEdge) const {
  if (fromEdge >= reach_) return 0;
  const double place = std::max(fromEdge, 0.0) / reach_ * steps;
  const auto index = std::min(static_cast<std::size_t>(place), static_cast<std::size_t>(steps - 1));
  const double part = place - static_cast<double>(index);
  const double a = curve()[index];
  const double b = curve()[index + 1];
  return (a + (b - a) * part) * reach_;
}

RoundedShape::Row RoundedShape::row(int y) {
  const double top = std::max<double>(y, rect_.y);
  const double bottom = std::min<double>(y + 1.0, rect_.y + rect_.height);
  if (bottom <= top || rect_.width <= 0) return {};

  const bool isStraight = y >= rect_.y + reach_ && y + 1 <= rect_.y + rect_.height - reach_;
  if (isStraight && straightKnown_) return straight_;

  std::array<double, slices> lefts{};
  std::array<double, slices> rights{};
  const double weight = (bottom - top) / slices;
  for (int i = 0; i < slices; ++i) {
    const double middle = top + (i + 0.5) * weight;
    const double inset = insetAt(std::min(middle - rect_.y, rect_.y + rect_.height - middle));
    lefts[static_cast<std::size_t>(i)] = rect_.x + inset;
    rights[static_cast<std::size_t>(i)] = rect_.x + rect_.width - inset;
  }
  const auto [leftmost, lastLeft] = std::minmax_element(lefts.begin(), lefts.end());
  const auto [firstRight, rightmost] = std::minmax_element(rights.begin(), rights.end());

  Row row;
  row.begin = static_cast<int>(std::floor(*leftmost));
  row.end = static_cast<int>(std::ceil(*rightmost));
  row.solidBegin = static_cast<int>(std::ceil(*lastLeft));
  row.solidEnd = static_cast<int>(std::floor(*firstRight));
  if (row.solidEnd <= row.solidBegin) row.solidBegin = row.solidEnd = row.end;
  row.solid = toCoverage(bottom - top);

  auto& edges = isStraight ? straightEdges_ : edges_;
  edges.clear();
  const auto cover = [&](int x) {
    double sum = 0;
    for (std::size_t i = 0; i < slices; ++i) {
      sum += std::max(0.0, std::min(x + 1.0, rights[i]) - std::max<double>(x, lefts[i]));
    }
    edges.push_back(toCoverage(sum * weight));
  };
  for (int x = row.begin; x < row.solidBegin; ++x) cover(x);
  for (int x = row.solidEnd; x < row.end; ++x) cover(x);
  row.edges = edges.data();
  if (isStraight) {
    straight_ = row;
    straightKnown_ = true;
  }
  return row;
}

}  // namespace tessaly
