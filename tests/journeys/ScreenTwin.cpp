#include "journeys/ScreenTwin.h"

#include <algorithm>
#include <cstdlib>

#include <QTest>

#include "fixture/Services.h"
#include "look/MarrowTheme.h"
#include "support/WindowItems.h"
#include "treemap/NodeTint.h"

namespace tessaly {

namespace {

int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

QRgb over(const Color& below, const Color& above, double opacity) {
  const auto mix = [opacity](int under, int upper) {
    return qRound(under * (1 - opacity) + upper * opacity);
  };
  return qRgb(mix(below.red, above.red), mix(below.green, above.green),
              mix(below.blue, above.blue));
}

QRgb background() {
  return over(MarrowTheme::bg, MarrowTheme::bg, 1);
}

// Whether `pixel` is in the fill of a tile of colour `tint` on the bare canvas, anywhere in its
// gradient from opacity 0.92 to 0.7.
bool isFillOf(QRgb pixel, const Color& tint) {
  const QRgb strong = over(MarrowTheme::bg, tint, 0.92);
  const QRgb faint = over(MarrowTheme::bg, tint, 0.7);
  const auto within = [](int value, int a, int b) {
    return value >= std::min(a, b) - 3 && value <= std::max(a, b) + 3;
  };
  return within(qRed(pixel), qRed(strong), qRed(faint)) &&
         within(qGreen(pixel), qGreen(strong), qGreen(faint)) &&
         within(qBlue(pixel), qBlue(strong), qBlue(faint));
}

QRgb at(const QImage& screen, double x, double y) {
  return screen.pixel(static_cast<int>(x), static_cast<int>(y));
}

}  // namespace

ScreenTwin::ScreenTwin(const std::string& home) : application_(servicesOf(machine_, home)) {
  application_.window().show();
  settle(application_.window());
}

QPoint ScreenTwin::middleOf(const QString& name) {
  return tessaly::middleOf(itemNamed(application_.window(), name));
}

QRect ScreenTwin::placeOf(const QString& name) {
  const QQuickItem* const item = itemNamed(application_.window(), name);
  if (item == nullptr) return {};
  return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).toAlignedRect();
}

void ScreenTwin::scan() {
  application_.session().scanHome();
  machine_.dispatch.drainAll();
  settle(application_.window());
}

void ScreenTwin::drillInto(const DiskNode& node) {
  application_.session().open(node);
  settle(application_.window());
}

void ScreenTwin::hover(QPoint point) {
  // Moves from a neighbouring point, so that there is always a move.
  QTest::mouseMove(&application_.window(), point - QPoint(1, 1));
  QTest::mouseMove(&application_.window(), point);
  settle(application_.window());
}

void ScreenTwin::click(const QString& name) {
  QTest::mouseClick(&application_.window(), Qt::LeftButton, Qt::NoModifier, middleOf(name));
  settle(application_.window());
}

void ScreenTwin::clickSecondary(QPoint point) {
  QTest::mouseClick(&application_.window(), Qt::RightButton, Qt::NoModifier, point);
  settle(application_.window());
}

std::vector<TreemapRect> ScreenTwin::tiles() {
  QQuickItem* canvas = itemNamed(application_.window(), QStringLiteral("canvas"));
  const QPointF corner = canvas->mapToScene(QPointF(0, 0));
  auto rects = TreemapLayout::layout(*application_.session().navigation().current(),
                                     {0, 0, canvas->width(), canvas->height()});
  for (auto& rect : rects) {
    rect.x += corner.x();
    rect.y += corner.y();
  }
  return rects;
}

QImage ScreenTwin::look() {
  return application_.window().grabWindow().convertToFormat(QImage::Format_RGB32);
}

std::string wrongAbout(const QImage& screen, const TreemapRect& rect,
                       const std::set<std::string>& grewPaths) {
  const Color tint = NodeTint::color(rect.node, BloatFilter::catalog(), grewPaths, false);
  const double middle = rect.x + rect.width / 2;
  const double low = rect.y + rect.height * 0.75;
  const double right = rect.x + rect.width;
  const double bottom = rect.y + rect.height;
  // Three points inside an edge there is fill. Gaps are two points wide, so one point outside the
  // edge is a pixel of the gap only; outlines extend half a point into it with opacity 0.4, which
  // makes it at most a fifth of the fill. The faintest fill differs by 70.
  if (!isFillOf(at(screen, middle, low), tint)) return "middle";
  if (!isFillOf(at(screen, rect.x + 3, low), tint)) return "inside the left edge";
  if (!isFillOf(at(screen, right - 3, low), tint)) return "inside the right edge";
  if (!isFillOf(at(screen, middle, bottom - 3), tint)) return "inside the bottom edge";
  if (distance(at(screen, rect.x - 1, low), background()) > 55) return "left of it";
  if (distance(at(screen, right + 1, low), background()) > 55) return "right of it";
  if (distance(at(screen, middle, bottom + 1), background()) > 55) return "below it";
  if (distance(at(screen, middle, rect.y - 1), background()) > 55) return "above it";
  return "";
}

double differenceWithin(const QRect& place, const QImage& one, const QImage& other) {
  constexpr int clearly = 60;
  const QRect shared = place & one.rect() & other.rect();
  if (shared.isEmpty()) return 1;
  int different = 0;
  for (int y = shared.top(); y <= shared.bottom(); ++y)
    for (int x = shared.left(); x <= shared.right(); ++x)
      if (distance(one.pixel(x, y), other.pixel(x, y)) > clearly) ++different;
  return static_cast<double>(different) / (place.width() * place.height());
}

}  // namespace tessaly
