// Every size, colour, font and opacity of the sidebar, read from its items.
#include <cmath>
#include <gtest/gtest.h>

#include "app/controls/PropertyTable.h"
#include "app/sidebar/SidebarScene_test.h"

namespace tessaly {
namespace {

// A length rounded as in a font, to 64ths of a point.
double inFont(double points) {
  return std::round(points * 64) / 64;
}

class SidebarLook : public SidebarScene {
 protected:
  // A window tall enough to show everything.
  void showAll() {
    fill();
    show(1400);
  }
};

TEST_F(SidebarLook, the_column_looks_as_designed) {
  showAll();
  expectProperties(*this, {{"sidebar", "implicitWidth", 260},
                           {"sidebar", "color", "#181a22 at 1.00"},
                           {"scrollArea", "padding", 12},
                           {"scrollArea", "spacing", 14}});
  const QStringList sections = {"driveCard",
                                "quickActionsSection",
                                "cleanupCategoriesSection",
                                "volumesAndHistorySection",
                                "excludedSection",
                                "devBloatSection",
                                "fileTypeLegend"};
  double bottom = 12 - 14;
  for (const QString& name : sections) {
    SCOPED_TRACE(name.toStdString());
    const QRectF rect = rectOf(find(name));
    EXPECT_EQ(rect.left(), 12);
    EXPECT_EQ(rect.width(), 236);
    EXPECT_NEAR(rect.top(), bottom + 14, 0.001);
    bottom = rect.bottom();
  }
  EXPECT_NEAR(read("scrollArea", "contentHeight").toDouble(), bottom + 12, 0.001);
  EXPECT_EQ(rectOf(find("bottomScanFooter")).bottom(), 1400);
}

TEST_F(SidebarLook, the_headers_look_as_designed) {
  showAll();
  const struct {
    const char* where;
    const char* title;
    const char* symbol;
    const char* tint;
  } rows[] = {{"quickActionsHeader", "Quick Actions", "bolt.fill", "#007aff at 1.00"},
              {"viewsHeader", "Views & Tools", "square.grid.2x2", "#9ca3af at 1.00"},
              {"pinned/sectionHeader", "Pinned", "star.fill", "#ff9500 at 1.00"},
              {"recents/sectionHeader", "Recents", "clock.arrow.circlepath", "#9ca3af at 1.00"},
              {"legendHeader", "File Kinds", "circle.grid.2x2", "#9ca3af at 1.00"}};
  for (const auto& row : rows) {
    const QString symbol = QLatin1String(row.where) + QStringLiteral("/headerSymbol");
    const QString title = QLatin1String(row.where) + QStringLiteral("/headerTitle");
    expectProperties(*this, {{symbol, "name", row.symbol},
                             {symbol, "size", 10},
                             {symbol, "color", row.tint},
                             {title, "text", row.title},
                             {title, "color", "#9ca3af at 1.00"},
                             {title, "font.pixelSize", 10},
                             {title, "font.weight", QFont::DemiBold},
                             {title, "font.letterSpacing", inFont(0.8)},
                             {title, "font.capitalization", QFont::AllUppercase}});
  }
}

TEST_F(SidebarLook, the_drive_card_looks_as_designed) {
  showAll();
  expectProperties(*this, {{"emblem", "width", 28},
                           {"emblem", "height", 28},
                           {"emblem", "radius", 8},
                           {"emblem", "color", "#007aff at 0.18"},
                           {"emblemSymbol", "name", "externaldrive.fill"},
                           {"emblemSymbol", "size", 13},
                           {"emblemSymbol", "color", "#007aff at 1.00"},
                           {"volumeName", "text", "System Disk"},
                           {"volumeName", "color", "#ffffff at 1.00"},
                           {"volumeName", "font.pixelSize", 13},
                           {"volumeName", "font.weight", QFont::DemiBold},
                           {"volumeTotal", "text", "494.0 GB EXT4"},
                           {"volumeTotal", "color", "#9ca3af at 1.00"},
                           {"volumeTotal", "font.pixelSize", 10},
                           {"volumeMenu", "width", 20},
                           {"volumeMenu/symbol", "name", "chevron.up.chevron.down"},
                           {"volumeMenu/symbol", "size", 10},
                           {"volumeMenu/symbol", "color", "#9ca3af at 1.00"},
                           {"volumeMenu/background", "color", "#ffffff at 0.06"},
                           {"volumeMenu/background", "radius", 4},
                           {"gauge/percent", "text", "75%"},
                           {"gauge/used", "text", "371.0 GB / 494.0 GB"},
                           {"gauge/free", "text", "123.0 GB free"}});
  EXPECT_GE(rectOf(find("volumeTotal")).top(), rectOf(find("volumeName")).bottom());
  EXPECT_LE(rectOf(find("volumeName")).right(), rectOf(find("volumeMenu")).left());
}

TEST_F(SidebarLook, an_entry_at_rest_looks_as_designed) {
  showAll();
  const QRectF item = rectOf(find("scanHome"));
  const QRectF symbol = rectOf(find("scanHome/symbol"));
  const QRectF label = rectOf(find("scanHome/label"));
  EXPECT_EQ(item.width(), 236);
  EXPECT_EQ(symbol.left() - item.left(), 8);
  EXPECT_EQ(symbol.width(), 16);
  EXPECT_EQ(label.left() - symbol.right(), 8);
  EXPECT_EQ(item.right() - label.right(), 8);
  expectProperties(*this, {{"scanHome", "topPadding", 6},
                           {"scanHome", "bottomPadding", 6},
                           {"scanHome/symbol", "size", 12},
                           {"scanHome/symbol", "color", "#9ca3af at 1.00"},
                           {"scanHome/label", "font.pixelSize", 12},
                           {"scanHome/label", "color", "#e5e7eb at 1.00"},
                           {"scanHome/background", "color", "#000000 at 0.00"},
                           {"scanHome/background", "radius", 6}});
}

TEST_F(SidebarLook, an_active_entry_with_a_badge_looks_as_designed) {
  showAll();
  expectProperties(*this, {{"diskTreemap/symbol", "color", "#007aff at 1.00"},
                           {"diskTreemap/label", "color", "#ffffff at 1.00"},
                           {"diskTreemap/background", "color", "#007aff at 0.14"},
                           {"diskTreemap/background", "radius", 6},
                           {"diskTreemap/badge", "color", "#ffffff at 0.06"},
                           {"diskTreemap/badgeText", "text", "92.0 GB"},
                           {"diskTreemap/badgeText", "font.pixelSize", 10},
                           {"diskTreemap/badgeText", "color", "#007aff at 1.00"},
                           {"diskTreemap/badgeText", "x", 6},
                           {"diskTreemap/badgeText", "y", 2},
                           {"systemPulse/badgeText", "color", "#34c759 at 1.00"},
                           {"emptyTrash/badgeText", "color", "#ff9500 at 1.00"}});
  for (const char* name : {"diskTreemap", "systemPulse", "emptyTrash"}) {
    const QRectF badge = rectOf(find(QLatin1String(name) + QStringLiteral("/badge")));
    const QRectF inside = rectOf(find(QLatin1String(name) + QStringLiteral("/badgeText")));
    EXPECT_NEAR(badge.width() - inside.width(), 12, 1);
    EXPECT_NEAR(badge.height() - inside.height(), 4, 1);
    EXPECT_EQ(rectOf(find(name)).right() - badge.right(), 8);
  }
  session().shown().setPane(MainPane::apps);
  settle();
  expectProperties(*this, {{"diskTreemap/symbol", "color", "#9ca3af at 1.00"},
                           {"diskTreemap/label", "color", "#e5e7eb at 1.00"},
                           {"diskTreemap/badgeText", "color", "#9ca3af at 1.00"},
                           {"diskTreemap/background", "color", "#000000 at 0.00"},
                           {"appLeftovers/label", "color", "#ffffff at 1.00"},
                           {"appLeftovers/background", "color", "#007aff at 0.14"}});
}

TEST_F(SidebarLook, the_entries_look_as_designed) {
  showAll();
  const struct {
    const char* name;
    const char* text;
    const char* symbol;
  } rows[] = {{"scanFullMac", "Scan Whole Disk", "externaldrive.badge.timemachine"},
              {"scanHome", "Scan Home", "house.fill"},
              {"chooseFolder", "Choose…", "folder.fill"},
              {"diskTreemap", "Disk Treemap", "square.split.2x2"},
              {"systemPulse", "System Pulse", "waveform.path.ecg"},
              {"appLeftovers", "App Leftovers", "app.badge.checkmark"},
              {"emptyTrash", "Trash", "trash"}};
  for (const auto& row : rows) {
    const QString name = QLatin1String(row.name);
    expectProperties(*this, {{name + "/label", "text", QString::fromUtf8(row.text)},
                             {name + "/symbol", "name", row.symbol}});
  }
  EXPECT_EQ(labels("quickActionsSection"),
            (QStringList{"Scan Whole Disk", "Scan Home", "Choose…"}));
  EXPECT_EQ(labels("cleanupCategoriesSection"),
            (QStringList{"Disk Treemap", "System Pulse", "App Leftovers", "Trash"}));
  EXPECT_EQ(read("systemPulse/badgeText", "text").toString(), "Live");
  EXPECT_EQ(read("emptyTrash/badgeText", "text").toString(), "17");
  EXPECT_TRUE(all("badge", find("appLeftovers")).empty());
}

TEST_F(SidebarLook, a_pinned_or_recent_folder_looks_as_designed) {
  showAll();
  const QStringList pins = labels("pinned");
  EXPECT_EQ(pins, (QStringList{"Projects", "media"}));
  EXPECT_EQ(labels("recents"),
            (QStringList{"Home", "System Disk", "media", QStringLiteral("Films \uFFFDt\uFFFD")}));
  for (QQuickItem* row : all("pathRow")) {
    const bool pinned = find("pinned")->isAncestorOf(row);
    const QRectF outside = rectOf(row);
    EXPECT_EQ(outside.width(), 236);
    EXPECT_EQ(row->property("radius").toDouble(), 6);
    EXPECT_EQ(describe(row->property("color").value<QColor>()), "#ffffff at 0.03");
    const QRectF label = rectOf(all("pathLabel", row).front());
    const QRectF star = rectOf(all("star", row).front());
    EXPECT_EQ(label.left() - outside.left(), 6);
    EXPECT_EQ(outside.right() - star.right(), 6);
    EXPECT_EQ(label.top() - outside.top(), 3);
    EXPECT_EQ(outside.bottom() - label.bottom(), 3);
    EXPECT_LE(label.right(), star.left());
    QQuickItem* folder = all("symbol", all("pathLabel", row).front()).front();
    EXPECT_EQ(folder->property("name"), "folder");
    EXPECT_EQ(folder->property("size"), 11);
    EXPECT_EQ(describe(folder->property("color").value<QColor>()), "#9ca3af at 1.00");
    QQuickItem* name = all("label", all("pathLabel", row).front()).front();
    EXPECT_EQ(name->property("font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(describe(name->property("color").value<QColor>()), "#ffffff at 1.00");
    EXPECT_EQ(name->property("maximumLineCount"), 1);
    QQuickItem* sign = all("symbol", all("star", row).front()).front();
    EXPECT_EQ(sign->property("name"), pinned ? "star.fill" : "star");
    EXPECT_EQ(sign->property("size"), 10);
    EXPECT_EQ(describe(sign->property("color").value<QColor>()),
              pinned ? "#ff9500 at 1.00" : "#9ca3af at 0.60");
    EXPECT_EQ(all("star", row).front()->property("help"), pinned ? "Unpin" : "Pin folder");
  }
}

TEST_F(SidebarLook, the_excluded_folders_look_as_designed) {
  showAll();
  expectProperties(*this, {{"excludedTitle", "text", "Excluded"},
                           {"excludedTitle", "font.pixelSize", 11},
                           {"addExclude/symbol", "name", "plus"},
                           {"addExclude/symbol", "size", 10},
                           {"addExclude/symbol", "color", "#007aff at 1.00"},
                           {"addExclude", "padding", 3},
                           {"addExclude/background", "color", "#ffffff at 0.06"},
                           {"addExclude", "help", "Exclude a folder from scans"}});
  EXPECT_EQ(rectOf(find("addExclude")).right(), 248);
  EXPECT_FALSE(shows("noExcludes"));
  EXPECT_EQ(labels("excludedSection", "excludeName"), (QStringList{"Mirror", "backup"}));
  for (QQuickItem* row : all("excludeRow")) {
    EXPECT_EQ(row->property("radius").toDouble(), 6);
    EXPECT_EQ(describe(row->property("color").value<QColor>()), "#ffffff at 0.03");
    QQuickItem* name = all("excludeName", row).front();
    EXPECT_EQ(name->property("font").value<QFont>().pixelSize(), 12);
    EXPECT_EQ(describe(name->property("color").value<QColor>()), "#ffffff at 1.00");
    QQuickItem* sign = all("symbol", row).front();
    EXPECT_EQ(sign->property("name"), "xmark");
    EXPECT_EQ(sign->property("size"), 9);
    EXPECT_EQ(describe(sign->property("color").value<QColor>()), "#9ca3af at 1.00");
  }
}

TEST_F(SidebarLook, the_section_without_excluded_folders_looks_as_designed) {
  show();
  expectProperties(*this, {{"noExcludes", "text", "No folders excluded"},
                           {"noExcludes", "font.pixelSize", 11},
                           {"noExcludes", "opacity", 0.8}});
  EXPECT_FALSE(shows("excludeRow"));
}

TEST_F(SidebarLook, the_filters_look_as_designed) {
  showAll();
  expectProperties(*this,
                   {{"devBloatSymbol", "name", "chevron.left.forwardslash.chevron.right"},
                    {"devBloatSymbol", "size", 11},
                    {"devBloatSymbol", "color", "#8b5cf6 at 1.00"},
                    {"devBloatTitle", "text", "Dev Bloat Filters"},
                    {"devBloatTitle", "font.pixelSize", 11},
                    {"devBloatTitle", "color", "#9ca3af at 1.00"},
                    {"devBloatTitle", "font.letterSpacing", inFont(0.6)},
                    {"devBloatTitle", "font.capitalization", QFont::AllUppercase},
                    {"devBloatHint", "text", "Toggle to highlight in treemap · slash to skip"},
                    {"devBloatHint", "font.pixelSize", 10},
                    {"devBloatHint", "opacity", 0.75},
                    {"filters", "spacing", 2}});
  QStringList names;
  for (const BloatFilter& filter : BloatFilter::catalog()) {
    names << QString::fromStdString(filter.name);
    const QString row = QString::fromStdString(filter.id);
    expectProperties(*this, {{row, "radius", 6},
                             {row + "/highlight/symbol", "name", filter.symbol.c_str()},
                             {row + "/highlight/symbol", "size", 11},
                             {row + "/highlight/symbol", "width", 14},
                             {row + "/highlight/label", "font.pixelSize", 12},
                             {row + "/skip/symbol", "size", 10}});
  }
  EXPECT_EQ(labels("filters"), names);
}

TEST_F(SidebarLook, a_filter_in_each_of_its_four_states_looks_as_designed) {
  showAll();
  const struct {
    const char* row;
    const char* fill;
    const char* symbol;
    const char* name;
    const char* skip;
    const char* skipColor;
    const char* help;
  } rows[] = {{"node_modules", "#ffffff at 0.04", "#007aff at 1.00", "#ffffff at 1.00", "eye.slash",
               "#9ca3af at 0.60", "Skip this on next scan"},
              {"xcode", "#ffffff at 0.04", "#007aff at 1.00", "#ffffff at 1.00", "eye.slash.fill",
               "#ff9500 at 1.00", "Skipping on next scan"},
              {"build", "#000000 at 0.00", "#9ca3af at 1.00", "#ffffff at 1.00", "eye.slash.fill",
               "#ff9500 at 1.00", "Skipping on next scan"},
              {"android", "#000000 at 0.00", "#9ca3af at 1.00", "#9ca3af at 1.00", "eye.slash",
               "#9ca3af at 0.60", "Skip this on next scan"}};
  for (const auto& row : rows) {
    const QString name = QLatin1String(row.row);
    expectProperties(*this, {{name, "color", row.fill},
                             {name + "/highlight/symbol", "color", row.symbol},
                             {name + "/highlight/label", "color", row.name},
                             {name + "/skip/symbol", "name", row.skip},
                             {name + "/skip/symbol", "color", row.skipColor},
                             {name + "/skip", "help", row.help}});
  }
  EXPECT_TRUE(read("xcode/highlight", "on").toBool());
  EXPECT_FALSE(read("build/highlight", "on").toBool());
}

TEST_F(SidebarLook, the_legend_looks_as_designed) {
  showAll();
  expectProperties(
      *this,
      {{"legendCard", "color", "#ffffff at 0.02"}, {"legendDots", "x", 8}, {"legendDots", "y", 8}});
  EXPECT_EQ(read("legendCard", "height").toDouble() - read("legendDots", "height").toDouble(), 16);
  EXPECT_EQ(labels("fileTypeLegend", "dotLabel"),
            (QStringList{"Video", "Image", "Doc", "Dev", "Archive", "Other"}));
  QStringList colors;
  for (QQuickItem* dot : all("dot")) {
    EXPECT_EQ(dot->width(), 7);
    EXPECT_EQ(dot->height(), 7);
    EXPECT_EQ(dot->property("radius"), 3.5);
    colors << dot->property("color").value<QColor>().name();
  }
  EXPECT_EQ(colors,
            (QStringList{"#3b82f6", "#f59e0b", "#8b5cf6", "#22c55e", "#ef4444", "#6b7280"}));
  for (QQuickItem* label : all("dotLabel")) {
    EXPECT_EQ(label->property("font").value<QFont>().pixelSize(), 10);
    EXPECT_EQ(describe(label->property("color").value<QColor>()), "#9ca3af at 1.00");
  }
}

TEST_F(SidebarLook, the_footer_at_rest_looks_as_designed) {
  showAll();
  const QRectF footer = rectOf(find("bottomScanFooter"));
  const QRectF button = rectOf(find("rescanVolume"));
  const QRectF rule = rectOf(find("footerRule"));
  EXPECT_EQ(rule, QRectF(0, footer.top(), 260, 1));
  EXPECT_EQ(button.left(), 12);
  EXPECT_EQ(button.right(), 248);
  EXPECT_EQ(button.top(), rule.bottom() + 10);
  EXPECT_EQ(button.bottom(), footer.bottom() - 10);
  expectProperties(*this, {{"footerRule", "color", "#ffffff at 0.08"},
                           {"rescanVolume/label", "text", "Rescan Volume"},
                           {"rescanVolume/symbol", "name", "arrow.clockwise"},
                           {"rescanVolume/background", "color", "#232530 at 1.00"}});
  EXPECT_FALSE(shows("scanProgress"));
}

TEST_F(SidebarLook, the_footer_and_the_actions_look_as_designed_during_a_scan) {
  showAll();
  const QRectF atRest = rectOf(find("bottomScanFooter"));
  walks_.at(walks_.ran()).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.percent(0.469);
  };
  session().scan("/srv");
  runWalks();
  dispatch_.step(Queue::main);
  settle();
  EXPECT_EQ(rectOf(find("bottomScanFooter")), atRest);
  EXPECT_FALSE(shows("rescanVolume"));
  expectProperties(*this, {{"footerText", "text", "Scanning"},
                           {"footerText", "font.pixelSize", 11},
                           {"footerPercent", "text", "46%"},
                           {"footerPercent", "font.pixelSize", 11},
                           {"footerRing", "value", 0.469},
                           {"cancelScan/label", "text", "Cancel Scan"},
                           {"cancelScan/label", "color", "#ff3b30 at 1.00"},
                           {"cancelScan/symbol", "name", "xmark.circle.fill"},
                           {"cancelScan/symbol", "color", "#ff3b30 at 1.00"}});
  EXPECT_EQ(rectOf(find("footerPercent")).right(), 248);
  EXPECT_EQ(rectOf(find("scanProgress")).left(), 12);
}

}  // namespace
}  // namespace tessaly
