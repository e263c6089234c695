// Sizes, colours, fonts and texts of the window's fixed parts.
#include <QFont>

#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class WindowLook : public Journey {
 protected:
  WindowLook()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "notes.txt 2M\n") {}

  void scan() {
    session().scanHome();
    finishScan();
  }

  void drillIn() {
    scan();
    session().open(session().navigation().current()->children()[0]);
  }

  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }
};

TEST_F(WindowLook, the_window_has_its_size_and_its_smallest_size) {
  EXPECT_EQ(window().size(), QSize(1280, 820));
  EXPECT_EQ(window().minimumSize(), QSize(1100, 680));
  EXPECT_EQ(window().color(), QColor("#1E1E1E"));
  EXPECT_TRUE(window().flags().testFlag(Qt::FramelessWindowHint));
  expectLook(window().contentItem(), {{"ground", "color", "#121318 at 1.00"},
                                      {"ground", "width", 1280},
                                      {"ground", "height", 820}});
}

TEST_F(WindowLook, the_title_bar_looks_as_designed) {
  drillIn();
  QQuickItem* const bar = item("titleBar");
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(itemNamed(bar, "name")->mapToScene(QPointF()).x(), 78);
  QQuickItem* const last = itemNamed(bar, "openMenu");
  EXPECT_EQ(last->mapToScene(QPointF(last->width(), 0)).x(), 1280 - 14);
  expectLook(bar, {
                      {"name", "text", "Tessaly"},
                      {"name", "font.pixelSize", 13},
                      {"name", "font.weight", QFont::Bold},
                      {"name", "color", "#ffffff at 1.00"},
                      {"volumeSymbol", "name", "externaldrive"},
                      {"volumeSymbol", "size", 10},
                      {"volumeSymbol", "color", "#007aff at 1.00"},
                      {"volumeName", "text", "System Disk"},
                      {"volumeName", "font.pixelSize", 11},
                      {"volumeName", "font.weight", QFont::Medium},
                      {"volumeName", "color", "#9ca3af at 1.00"},
                      {"back/symbol", "name", "chevron.left"},
                      {"back/symbol", "size", 11},
                      {"back/symbol", "color", "#007aff at 1.00"},
                      {"back/label", "text", "Back"},
                      {"back/label", "font.pixelSize", 11},
                      {"back/label", "font.weight", QFont::Medium},
                      {"back/label", "color", "#007aff at 1.00"},
                      {"back/background", "color", "#007aff at 0.12"},
                      {"back/background", "radius", 5},
                      {"searchField", "width", 380},
                      {"searchField/background", "color", "#232530 at 0.70"},
                      {"searchField/background", "radius", 8},
                      {"searchField/background", "outlineColor", "#ffffff at 0.08"},
                      {"searchField/background", "outlineWidth", 1},
                      {"searchField/searchSymbol", "name", "magnifyingglass"},
                      {"searchField/searchSymbol", "size", 11},
                      {"searchField/searchSymbol", "color", "#007aff at 1.00"},
                      {"searchField/searchText", "text", "Search files, folders & caches…"},
                      {"searchField/searchText", "font.pixelSize", 12},
                      {"searchField/searchText", "color", "#9ca3af at 1.00"},
                      {"searchField/keyCap", "radius", 4},
                      {"searchField/keyCap", "color", "#ffffff at 0.08"},
                      {"searchField/keyCapText", "text", "Ctrl F"},
                      {"searchField/keyCapText", "font.pixelSize", 10},
                      {"rule", "width", 1},
                      {"rule", "height", 16},
                      {"openAssistant/symbol", "name", "sparkles"},
                      {"openInbox/symbol", "name", "text.viewfinder"},
                      {"openMenu/symbol", "name", "line.3.horizontal"},
                  });
}

TEST_F(WindowLook, the_pane_switch_looks_as_designed) {
  session().shown().setPane(MainPane::apps);
  QQuickItem* const bar = item("titleBar");
  expectLook(bar, {
                      {"showMap/label", "text", "Map"},
                      {"showMap/symbol", "name", "square.split.2x2"},
                      {"showMap/symbol", "size", 11},
                      {"showMap/symbol", "color", "#9ca3af at 1.00"},
                      {"showMap/label", "font.pixelSize", 11},
                      {"showMap/label", "font.weight", QFont::Medium},
                      {"showMap/label", "color", "#9ca3af at 1.00"},
                      {"showMap/background", "color", "#ffffff at 0.04"},
                      {"showMap/background", "outlineColor", "#ffffff at 0.08"},
                      {"showMap", "active", false},
                      {"showApps/label", "text", "Apps"},
                      {"showApps/symbol", "name", "square.grid.2x2"},
                      {"showApps/symbol", "size", 11},
                      {"showApps/symbol", "color", "#007aff at 1.00"},
                      {"showApps/background", "color", "#007aff at 0.18"},
                      {"showApps/background", "outlineColor", "#007aff at 0.45"},
                      {"showApps/label", "font.pixelSize", 11},
                      {"showApps/label", "color", "#007aff at 1.00"},
                      {"showApps/label", "font.weight", QFont::Medium},
                      {"showApps", "active", true},
                      {"showPulse/label", "text", "Pulse"},
                      {"showPulse/symbol", "name", "waveform.path.ecg"},
                      {"showPulse/symbol", "size", 11},
                      {"showPulse/label", "font.pixelSize", 11},
                      {"showPulse/label", "font.weight", QFont::Medium},
                      {"showPulse", "active", false},
                  });
}

TEST_F(WindowLook, the_breadcrumbs_look_as_designed) {
  drillIn();
  QQuickItem* const bar = item("breadcrumbs");
  expectLook(bar, {{"", "height", 36},
                   {"", "color", "#121318 at 1.00"},
                   {"rule", "height", 1},
                   {"rule", "y", 35},
                   {"rule", "width", 1280},
                   {"rule", "color", "#ffffff at 0.05"}});
  const auto chips = itemsNamed(bar, "chip");
  ASSERT_EQ(chips.size(), 2U);
  expectLook(chips[0], {{"symbol", "name", "internaldrive"},
                        {"symbol", "size", 10},
                        {"symbol", "color", "#9ca3af at 1.00"},
                        {"label", "font.pixelSize", 11},
                        {"label", "color", "#9ca3af at 1.00"},
                        {"background", "color", "#ffffff at 0.03"},
                        {"background", "outlineColor", "#ffffff at 0.06"},
                        {"background", "outlineWidth", 1},
                        {"background", "radius", 6}});
  expectLook(chips[1], {{"symbol", "name", "folder"},
                        {"symbol", "size", 10},
                        {"symbol", "color", "#007aff at 1.00"},
                        {"label", "text", "Movies"},
                        {"label", "font.pixelSize", 11},
                        {"label", "color", "#ffffff at 1.00"},
                        {"background", "color", "#007aff at 0.14"},
                        {"background", "outlineColor", "#007aff at 0.30"},
                        {"background", "outlineWidth", 1},
                        {"background", "radius", 6}});
  expectLook(bar, {{"chevron", "name", "chevron.right"},
                   {"chevron", "size", 8},
                   {"chevron", "color", "#9ca3af at 1.00"}});
  const QRectF chevron = rectOf(itemNamed(bar, "chevron"));
  EXPECT_GE(chevron.left(), rectOf(chips[0]).right());
  EXPECT_LE(chevron.right(), rectOf(chips[1]).left());
}

TEST_F(WindowLook, the_column_of_bars_and_the_row_below_them_look_as_designed) {
  drillIn();
  const QRectF title = rectOf(item("titleBar"));
  const QRectF crumbs = rectOf(item("breadcrumbs"));
  const QRectF sidebar = rectOf(item("sidebar"));
  const QRectF rule = rectOf(item("sidebarRule"));
  const QRectF area = rectOf(item("mainArea"));
  EXPECT_EQ(title.topLeft(), QPointF(0, 0));
  EXPECT_EQ(title.width(), 1280);
  EXPECT_EQ(crumbs, QRectF(0, title.bottom(), 1280, 36));
  EXPECT_EQ(sidebar, QRectF(0, crumbs.bottom(), 260, 820 - crumbs.bottom()));
  EXPECT_EQ(rule, QRectF(260, sidebar.top(), 1, sidebar.height()));
  EXPECT_EQ(area, QRectF(261, sidebar.top(), 1280 - 261, sidebar.height()));
  expectLook(item("sidebarRule"), {{"", "color", "#ffffff at 0.06"}});
  session().shown().setPane(MainPane::apps);
  EXPECT_EQ(rectOf(item("sidebar")).top(), title.bottom());
}

TEST_F(WindowLook, the_buttons_for_panes_and_search_look_as_designed) {
  const QRectF area = rectOf(item("mainArea"));
  EXPECT_EQ(rectOf(item("diskMap")), area);
  session().shown().setSearchOpen(true);
  EXPECT_EQ(rectOf(item("search")), area);
  session().shown().setPane(MainPane::apps);
  EXPECT_EQ(rectOf(item("apps")), area);
  session().shown().setPane(MainPane::monitor);
  EXPECT_EQ(rectOf(item("pulse")), area);
}

TEST_F(WindowLook, layers_are_in_order) {
  // Later items are drawn over earlier ones.
  std::vector<const QQuickItem*> layers;
  for (const char* name :
       {"mainArea", "cleanupQueue", "toastPanel", "gate", "assistant", "inbox"}) {
    const QQuickItem* layer = window().findChild<QQuickItem*>(QString::fromLatin1(name));
    ASSERT_NE(layer, nullptr) << name;
    while (layer->parentItem() != window().contentItem()) layer = layer->parentItem();
    layers.push_back(layer);
  }
  const auto order = window().contentItem()->childItems();
  for (std::size_t i = 1; i < layers.size(); ++i) {
    EXPECT_EQ(layers[i]->z(), 0);
    EXPECT_LT(order.indexOf(layers[i - 1]), order.indexOf(layers[i])) << i;
  }
}

TEST_F(WindowLook, the_toast_looks_as_designed) {
  session().messages().flash("Hello");
  QQuickItem* const panel = item("toastPanel");
  expectLook(panel, {{"", "radius", 8},
                     {"", "color", "#181a22 at 0.96"},
                     {"", "outlineColor", "#ffffff at 0.12"},
                     {"", "outlineWidth", 1},
                     {"", "shadowColor", "#000000 at 0.50"},
                     {"", "shadowRadius", 12},
                     {"", "shadowOffset", 4},
                     {"toastSymbol", "name", "bolt.fill"},
                     {"toastSymbol", "size", 11},
                     {"toastSymbol", "color", "#007aff at 1.00"},
                     {"toast", "text", "Hello"},
                     {"toast", "font.pixelSize", 12},
                     {"toast", "font.weight", QFont::Medium},
                     {"toast", "color", "#ffffff at 1.00"}});
  EXPECT_EQ(panel->y() + panel->height(), 820 - 20);
  EXPECT_NEAR(panel->x() + panel->width() / 2, 640, 0.5);
  const QQuickItem* const text = itemNamed(panel, "toast");
  const QQuickItem* const symbol = itemNamed(panel, "toastSymbol");
  EXPECT_EQ(symbol->mapToItem(panel, QPointF()).x(), 14);
  EXPECT_EQ(text->mapToItem(panel, QPointF()).y(), 8);
  EXPECT_EQ(text->mapToItem(panel, QPointF(0, text->height())).y(), panel->height() - 8);
  EXPECT_EQ(text->mapToItem(panel, QPointF(text->width(), 0)).x(), panel->width() - 14);
}

TEST_F(WindowLook, the_toast_rises_from_the_edge_and_fades) {
  QQuickItem* const panel = window().findChild<QQuickItem*>("toastPanel");
  ASSERT_NE(panel, nullptr);
  const auto topOf = [panel] { return rectOf(panel).top(); };
  // The hidden toast is below the window.
  EXPECT_EQ(panel->opacity(), 0);
  EXPECT_GE(topOf(), 820);
  session().messages().flash("Hello");
  // It begins at its last position.
  QCoreApplication::sendPostedEvents();
  EXPECT_LT(panel->opacity(), 1);
  EXPECT_GT(topOf(), 820 - 20 - panel->height());
  settle(window());
  EXPECT_EQ(panel->opacity(), 1);
  EXPECT_EQ(topOf(), 820 - 20 - panel->height());
}

TEST_F(WindowLook, the_parts_are_in_order_in_the_smallest_window) {
  drillIn();
  window().resize(1100, 680);
  settle(window());
  QQuickItem* const bar = item("titleBar");
  double end = 78;
  for (const char* name : {"name", "volumeName", "back", "searchField", "showMap", "showApps",
                           "showPulse", "rule", "openAssistant", "openInbox"}) {
    const QQuickItem* const part = itemNamed(bar, name);
    ASSERT_NE(part, nullptr) << name;
    const double begin = part->mapToScene(QPointF()).x();
    EXPECT_GE(begin, end) << name;
    end = begin + part->width();
  }
  EXPECT_LE(end, 1100 - 14);
  EXPECT_EQ(itemNamed(bar, "searchField")->width(), 380);
}

}  // namespace
}  // namespace tessaly
