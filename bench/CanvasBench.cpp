// Measures the CPU time of the treemap on the software renderer, in a real window of 1280 by 820
// with 500 tiles: a full repaint, and a move of the pointer to another tile, each including the
// rendering of the frame. Prints the minimum of seven repetitions, and how often all tiles were
// repainted while the pointer moved, which must be never.
//
// Usage: tessaly_canvas_bench [scale]    with 2 for the pixels of a dense screen
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

#include "SampleFolder.h"
#include "app/controls/Fonts.h"
#include "app/map/TreemapSurface.h"
#include "app/model/NodeActions.h"
#include "session/ScanSession.h"
#include "support/FakeMachine.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_MapPlugin)

namespace tessaly {
namespace {

constexpr int repetitions = 7;

double cpuMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class CanvasBench {
 public:
  CanvasBench() {
    window_.resize(1280, 820);
    QQmlComponent component(&engine_);
    component.setData("import Tessaly.Map\nTreemapCanvas { width: 1280; height: 820 }", QUrl());
    const NodeHandle node(bench::sampleFolder(7));
    canvas_.reset(qobject_cast<TreemapSurface*>(
        component.createWithInitialProperties({{"map", QVariant::fromValue(&map_)},
                                               {"actions", QVariant::fromValue(&actions_)},
                                               {"node", QVariant::fromValue(node)}})));
    if (!canvas_) qFatal("%s", qPrintable(component.errorString()));
    canvas_->setParentItem(window_.contentItem());
    window_.show();
    waitForFrame();
  }

  void run() {
    std::printf("tiles %zu, pixels a point %g\n", canvas_->tiles().all().size(),
                window_.effectiveDevicePixelRatio());
    double repaint = 1e9;
    for (int i = 0; i < repetitions; ++i) {
      const double before = cpuMilliseconds();
      emit session_.selection().selectionChanged();
      waitForFrame();
      repaint = std::min(repaint, cpuMilliseconds() - before);
    }
    std::printf("full repaint: %.2f ms\n", repaint);

    double otherNames = 1e9;
    for (unsigned i = 0; i < repetitions; ++i) {
      canvas_->setNode(NodeHandle(bench::sampleFolder(100 + i)));
      const double before = cpuMilliseconds();
      waitForFrame();
      otherNames = std::min(otherNames, cpuMilliseconds() - before);
    }
    std::printf("full repaint with names not seen before: %.2f ms\n", otherNames);
    canvas_->setNode(NodeHandle(bench::sampleFolder(7)));
    waitForFrame();

    const std::vector<CanvasTile> tiles = canvas_->tiles().all();
    std::vector<double> moves(tiles.size(), 1e9);
    const int painted = canvas_->tileTexture().pictureCount();
    for (int i = 0; i < repetitions; ++i) {
      for (std::size_t tile = 0; tile < tiles.size(); ++tile) {
        const double before = cpuMilliseconds();
        moveTo(tiles[tile].rect);
        waitForFrame();
        moves[tile] = std::min(moves[tile], cpuMilliseconds() - before);
      }
    }
    const auto worst = std::ranges::max_element(moves);
    const TreemapRect& slowest = tiles[static_cast<std::size_t>(worst - moves.begin())].rect;
    std::ranges::sort(moves);
    const double sum = std::accumulate(moves.begin(), moves.end(), 0.0);
    std::printf(
        "hover: mean %.3f ms, 99th percentile %.3f ms, worst %.3f ms (a tile of %.0f by %.0f)\n",
        sum / static_cast<double>(moves.size()), moves[moves.size() * 99 / 100], moves.back(),
        slowest.width, slowest.height);
    std::printf("paintings of all tiles meanwhile: %d\n",
                canvas_->tileTexture().pictureCount() - painted);
  }

 private:
  // Blocks until the next frame has been rendered, so that waiting uses no measured time.
  void waitForFrame() {
    QEventLoop loop;
    QObject::connect(&window_, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    window_.update();
    loop.exec();
  }

  void moveTo(const TreemapRect& rect) {
    // The header band of an opened folder, or the middle of a tile.
    const QPointF point(rect.x + rect.width / 2, rect.y + (rect.nested ? 9 : rect.height / 2));
    QMouseEvent event(QEvent::MouseMove, point, window_.mapToGlobal(point), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
  }

  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  ScanSession session_{machine_.services("/home")};
  CanvasState map_{session_};
  NodeActions actions_{{.workspace = machine_.workspace,
                        .pasteboard = machine_.pasteboard,
                        .quickLook = {},
                        .openTerminal = {},
                        .openInEditor = {}}};
  QQmlEngine engine_;
  QQuickWindow window_;
  std::unique_ptr<TreemapSurface> canvas_;
};

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  if (argc > 1) qputenv("QT_SCALE_FACTOR", argv[1]);
  const QApplication application(argc, argv);
  tessaly::Fonts::install();
  tessaly::CanvasBench().run();
}
