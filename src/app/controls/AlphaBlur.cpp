#include "app/controls/AlphaBlur.h"

#include <cmath>
#include <utility>
#include <vector>

namespace tessaly::AlphaBlur {

namespace {

constexpr int passes = 3;

struct Box {
  int half = 0;     // samples of full weight on each side of the middle
  double edge = 0;  // the weight of one more sample on each side
};

Box boxOf(double sigma) {
  const double variance = sigma * sigma;
  const int half = static_cast<int>((std::sqrt(4 * variance + 1) - 1) / 2);
  const double outer = half + 1;
  return {.half = half,
          .edge = (2 * half + 1) * (half * outer - variance) / (2 * variance - 6 * outer * outer)};
}

// Both `from` and `to` have a margin of half + 1 zeros on each side of `count` values.
void pass(const std::vector<double>& from, std::vector<double>& to, int count, const Box& box) {
  const double weight = 2 * box.half + 1 + 2 * box.edge;
  const double* const first = from.data();
  double* const result = to.data() + box.half + 1;
  double sum = 0;
  for (int i = 1; i <= 2 * box.half; ++i) sum += first[i];
  for (int i = 0; i < count; ++i) {
    const int last = i + 2 * box.half + 1;
    sum += first[last];
    result[i] = (sum + box.edge * (first[i] + first[last + 1])) / weight;
    sum -= first[i + 1];
  }
}

}  // namespace

int margin(double sigma) {
  return passes * (boxOf(sigma).half + 1);
}

void blurLine(std::uint8_t* line, int count, std::ptrdiff_t stride, double sigma) {
  const Box box = boxOf(sigma);
  std::vector<double> values(static_cast<std::size_t>(count + 2 * (box.half + 1)));
  std::vector<double> blurred(values.size());
  for (int i = 0; i < count; ++i) values.data()[box.half + 1 + i] = line[i * stride];
  for (int i = 0; i < passes; ++i) {
    pass(values, blurred, count, box);
    std::swap(values, blurred);
  }
  for (int i = 0; i < count; ++i) {
    line[i * stride] = static_cast<std::uint8_t>(values.data()[box.half + 1 + i] + 0.5);
  }
}

void blur(QImage& alpha, double sigma) {
  for (int y = 0; y < alpha.height(); ++y) blurLine(alpha.scanLine(y), alpha.width(), 1, sigma);
  for (int x = 0; x < alpha.width(); ++x) {
    blurLine(alpha.bits() + x, alpha.height(), alpha.bytesPerLine(), sigma);
  }
}

}  // namespace tessaly::AlphaBlur
