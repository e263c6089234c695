// Measures the map of a tree of 100,000 nodes in the real window, on the software renderer: from
// the click on a folder to its painted map, from a resize of the window to the painted map, a move
// of the pointer to another tile, and a move of a rubber band that grows over all tiles. The
// machine is a fake.
//
// Each action is done seven times, and the fastest of the same action counts; the percentile is
// over the moves of one band.
//
// Usage: tessaly_map_bench [scale]    with 2 for the pixels of a dense screen
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include "SampleFolder.h"
#include "app/Application.h"
#include "app/map/TreemapSurface.h"
#include "fixture/FixtureWindow.h"
#include "support/FakeMachine.h"

namespace tessaly {
namespace {

constexpr int repetitions = 7;
constexpr int bandMoves = 300;

struct Cost {
  double wall = 1e9;  // both in milliseconds
  double cpu = 1e9;

  void takeLess(const Cost& other) {
    wall = std::min(wall, other.wall);
    cpu = std::min(cpu, other.cpu);
  }
};

double milliseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

Cost costOf(const std::function<void()>& act) {
  const double wall = milliseconds(CLOCK_MONOTONIC);
  const double cpu = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
  act();
  return {.wall = milliseconds(CLOCK_MONOTONIC) - wall,
          .cpu = milliseconds(CLOCK_PROCESS_CPUTIME_ID) - cpu};
}

// The header band of an opened folder, or the middle of a tile.
QPointF on(const TreemapRect& rect) {
  return {rect.x + rect.width / 2, rect.y + (rect.nested ? 9 : rect.height / 2)};
}

class MapBench {
 public:
  MapBench() {
    waitForFrame();
    session().scanHome();
    machine_.dispatch.drainAll();
    waitForFrame();
  }

  void run() {
    drillIn();
    resize();
    hover();
    band();
  }

 private:
  QQuickWindow& window() { return fixture_.window(); }
  ScanSession& session() { return fixture_.session(); }

  static TreemapSurface* canvasBelow(QQuickItem* item) {
    if (auto* const canvas = qobject_cast<TreemapSurface*>(item)) return canvas;
    for (QQuickItem* child : item->childItems()) {
      if (TreemapSurface* const canvas = canvasBelow(child)) return canvas;
    }
    return nullptr;
  }
  TreemapSurface& canvas() {
    TreemapSurface* const found = canvasBelow(window().contentItem());
    if (found == nullptr) qFatal("the window shows no map");
    return *found;
  }

  // Blocks until the next frame has been rendered, so that waiting uses no CPU.
  void waitForFrame() {
    QEventLoop loop;
    QObject::connect(&window(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    window().update();
    loop.exec();
  }

  void send(QEvent::Type type, QPointF point, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QMouseEvent event(type, point, window().mapToGlobal(point), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &event);
  }

  void drillIn() {
    std::printf("nodes %zu, tiles %zu, pixels a point %g\n",
                bench::nodeCount(*canvas().node().node()), canvas().tiles().all().size(),
                window().effectiveDevicePixelRatio());
    const auto& all = canvas().tiles().all();
    const auto largest = std::ranges::max_element(all, {}, [](const CanvasTile& tile) {
      return tile.rect.nested ? tile.rect.node.children().size() : 0;
    });
    const std::string path = largest->rect.node.path();
    const QPointF point = canvas().mapToScene(on(largest->rect));
    Cost least;
    std::size_t tiles = 0;
    for (int i = 0; i < repetitions; ++i) {
      send(QEvent::MouseMove, point, Qt::NoButton, Qt::NoButton);
      waitForFrame();
      least.takeLess(costOf([&] {
        send(QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
        do {
          waitForFrame();
        } while (canvas().tileTexture().pictureCount() == 0);
      }));
      if (canvas().node().node()->path() != path) qFatal("the click has opened no folder");
      tiles = canvas().tiles().all().size();
      session().navigation().back();
      waitForFrame();
    }
    std::printf("drill-in to the painted map of %zu tiles: %.2f ms, CPU %.2f ms\n", tiles,
                least.wall, least.cpu);
  }

  void resize() {
    Cost least;
    for (int i = 0; i < repetitions; ++i) {
      const int before = canvas().tileTexture().pictureCount();
      least.takeLess(costOf([&] {
        window().resize(1600 + (i % 2 == 0 ? 120 : 0), 1000);
        do {
          waitForFrame();
        } while (canvas().tileTexture().pictureCount() == before);
      }));
    }
    window().resize(1600, 1000);
    waitForFrame();
    std::printf("resize to the painted map: %.2f ms, CPU %.2f ms\n", least.wall, least.cpu);
  }

  void print(const char* what, std::vector<Cost> moves) {
    std::ranges::sort(moves, {}, &Cost::cpu);
    double sum = 0;
    for (const Cost& move : moves) sum += move.cpu;
    std::printf("%s: CPU mean %.3f ms, 99th percentile %.3f ms, worst %.3f ms\n", what,
                sum / static_cast<double>(moves.size()), moves[moves.size() * 99 / 100].cpu,
                moves.back().cpu);
  }

  void hover() {
    const std::vector<CanvasTile> tiles = canvas().tiles().all();
    const QPointF origin = canvas().mapToScene({0, 0});
    std::vector<Cost> moves(tiles.size());
    for (int i = 0; i < repetitions; ++i) {
      for (std::size_t tile = 0; tile < tiles.size(); ++tile) {
        moves[tile].takeLess(costOf([&] {
          send(QEvent::MouseMove, origin + on(tiles[tile].rect), Qt::NoButton, Qt::NoButton);
          waitForFrame();
        }));
      }
    }
    print("hover", moves);
  }

  void band() {
    const QSizeF size = canvas().size();
    const QPointF origin = canvas().mapToScene({0, 0});
    std::vector<Cost> moves(bandMoves);
    double release = 1e9;
    for (int i = 0; i < repetitions; ++i) {
      send(QEvent::MouseButtonPress, origin + QPointF(1, 1), Qt::LeftButton, Qt::LeftButton);
      for (int move = 0; move < bandMoves; ++move) {
        const double part = (move + 1.0) / bandMoves;
        moves[static_cast<std::size_t>(move)].takeLess(costOf([&] {
          send(QEvent::MouseMove,
               origin + QPointF(10 + part * (size.width() - 12), 10 + part * (size.height() - 12)),
               Qt::NoButton, Qt::LeftButton);
          waitForFrame();
        }));
      }
      const Cost end = costOf([&] {
        send(QEvent::MouseButtonRelease, origin + QPointF(size.width() - 2, size.height() - 2),
             Qt::LeftButton, Qt::NoButton);
        waitForFrame();
      });
      release = std::min(release, end.cpu);
      if (session().selection().selected().empty()) qFatal("the band has selected nothing");
      session().selection().clearSelection();
      waitForFrame();
    }
    print("move of the rubber band", moves);
    std::printf("release of the rubber band: CPU %.2f ms\n", release);
  }

  const DiskNode tree_ = bench::sampleFolder(7, 24);
  FakeMachine machine_;
  FixtureWindow fixture_{machine_, tree_.path(),
                         [this](Application::Services& services) {
                           services.walk = [this](const auto&, const auto&, const auto&) {
                             return tree_;
                           };
                         },
                         [](QQuickWindow& window) { window.resize(1600, 1000); }};
};

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  if (argc > 1) qputenv("QT_SCALE_FACTOR", argv[1]);
  const QApplication application(argc, argv);
  tessaly::Application::setUpLook();
  tessaly::MapBench().run();
}
