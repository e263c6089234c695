// The items that a scan could not read, in the header of the map: a number beside the counts, and a
// list under the pointer or with the keyboard focus. The header has its width in the smallest
// window. Any warning of the QML engine fails the test.
#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QTest>

#include "app/panes/DiskMapState.h"
#include "session/SessionFixture_test.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

constexpr QSize window(1100, 680);
constexpr double left = 261;
constexpr int longTime = 60000;

class UnreadableFigure : public SessionFixture {
 protected:
  void SetUp() override {
    view_ = std::make_unique<QQuickView>();
    QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
      for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
    });
    auto* component = new QQmlComponent(view_->engine(), view_.get());
    component->setData(
        "import QtQuick\nimport Tessaly.Model\nimport Tessaly.Panes\n"
        "Rectangle { id: scene; required property DiskMapState map; color: \"#121318\"\n"
        "Item { objectName: \"other\"; activeFocusOnTab: true; width: 20; height: 20 }\n"
        "TreemapHeader { objectName: \"header\"; x: 261; y: 82; width: 839; map: scene.map } }",
        QUrl(QStringLiteral("qrc:/HeaderScene.qml")));
    state_ = std::make_unique<DiskMapState>(session());
    QObject* root =
        component->createWithInitialProperties({{"map", QVariant::fromValue(state_.get())}});
    ASSERT_NE(root, nullptr) << component->errorString().toStdString();
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->resize(window);
    view_->setContent(QUrl(), component, root);
    view_->show();
    view_->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  }

  void scan(int unreadable, const std::string& path = "/home/ada/locked",
            const std::string& name = "ada") {
    walks().at(walks().ran()).during = [unreadable, path](const DiskScanner::Callbacks& callbacks) {
      for (int i = 0; i < unreadable; ++i) {
        callbacks.unreadable(SystemError::fromErrno(EACCES, path));
      }
    };
    scanTo(folder("/home/" + name, 6 << 20, {file("/home/" + name + "/film.mp4", 6 << 20)}));
    settle(*view_);
  }

  QQuickItem* part(const QString& name) {
    QQuickItem* const found = itemNamed(*view_, name);
    EXPECT_NE(found, nullptr) << "the window does not show exactly one " << name.toStdString();
    return found;
  }
  bool shows(const QString& name) { return !itemsNamed(view_->contentItem(), name).empty(); }
  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }
  void hoverAt(QPoint point) {
    QTest::mouseMove(view_.get(), QPoint(1, 1));
    QTest::mouseMove(view_.get(), point);
    settle(*view_);
  }
  void press(Qt::Key key) {
    QTest::keyClick(view_.get(), key);
    settle(*view_);
  }
  bool waitForList(bool isThere) {
    return QTest::qWaitFor(
        [&] {
          settle(*view_);
          return shows("tipText") == isThere;
        },
        longTime);
  }

  std::unique_ptr<DiskMapState> state_;
  std::unique_ptr<QQuickView> view_;
};

TEST_F(UnreadableFigure, the_figure_is_hidden_if_everything_was_read) {
  scan(0);
  EXPECT_FALSE(shows("unreadable"));
  EXPECT_EQ(rectOf(part("stats")).right(), window.width() - 14);
}

TEST_F(UnreadableFigure, the_figure_follows_the_counts_in_the_colour_of_a_warning) {
  scan(12);
  expectLook(part("header"), {{"unreadable/figure", "text", "· 12 unreadable"},
                              {"unreadable/figure", "color", "#ff9500 at 1.00"},
                              {"unreadable/figure", "font.family", "JetBrains Mono"},
                              {"unreadable/figure", "font.pixelSize", 10},
                              {"stats", "color", "#9ca3af at 1.00"}});
  EXPECT_EQ(rectOf(part("unreadable")).right(), window.width() - 14);
  EXPECT_EQ(rectOf(part("unreadable")).left() - rectOf(part("stats")).right(), 6);
  EXPECT_EQ(rectOf(part("figure")).bottom(), rectOf(part("stats")).bottom());
}

TEST_F(UnreadableFigure, the_figure_fits_beside_the_longest_name) {
  scan(123456, "/locked", std::string(200, 'n'));
  double end = left + 14;
  for (const char* name : {"folder", "name", "size", "items", "stats", "unreadable"}) {
    EXPECT_GE(rectOf(part(name)).left(), end) << name;
    end = rectOf(part(name)).right();
  }
  EXPECT_EQ(end, window.width() - 14);
  EXPECT_GT(part("name")->width(), 100);
}

TEST_F(UnreadableFigure, the_list_is_shown_while_the_pointer_rests_on_the_figure) {
  scan(2);
  EXPECT_FALSE(shows("tipText"));
  hoverAt(middleOf(part("unreadable")));
  ASSERT_TRUE(waitForList(true));
  EXPECT_EQ(part("tipText")->property("text").toString(),
            QStringLiteral("/home/ada/locked: not permitted\n/home/ada/locked: not permitted"));
  hoverAt(middleOf(part("size")));
  EXPECT_TRUE(waitForList(false));
}

TEST_F(UnreadableFigure, the_list_is_shown_while_the_figure_has_the_keyboard_focus) {
  scan(1);
  press(Qt::Key_Tab);
  press(Qt::Key_Tab);
  ASSERT_EQ(view_->activeFocusItem(), part("unreadable"));
  EXPECT_TRUE(shows("focusRing"));
  EXPECT_TRUE(waitForList(true));
  // When the figure is hidden, the focus moves on.
  scan(0);
  EXPECT_FALSE(shows("unreadable"));
  EXPECT_EQ(view_->activeFocusItem(), part("other"));
}

TEST_F(UnreadableFigure, figure_and_list_are_accessible) {
  scan(1);
  const QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(part("unreadable"));
  ASSERT_NE(told, nullptr);
  EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("· 1 unreadable"));
  EXPECT_EQ(told->text(QAccessible::Description),
            QStringLiteral("/home/ada/locked: not permitted"));
}

TEST_F(UnreadableFigure, the_longest_list_fits) {
  scan(1000, "/" + std::string(250, 'W') + "/" + std::string(250, 'W'));
  hoverAt(middleOf(part("unreadable")));
  ASSERT_TRUE(waitForList(true));
  QQuickItem* const text = part("tipText");
  const QRectF whole = rectOf(text->parentItem());
  EXPECT_TRUE(QRectF({}, QSizeF(window)).contains(whole))
      << whole.left() << " " << whole.top() << " " << whole.width() << " " << whole.height();
  EXPECT_GE(text->width() + 1, text->implicitWidth());
  EXPECT_GE(text->height() + 1, text->implicitHeight());
  EXPECT_GE(whole.top(), rectOf(part("unreadable")).bottom());
}

TEST_F(UnreadableFigure, the_figure_is_hidden_during_a_scan) {
  scan(12);
  session().rescan();
  settle(*view_);
  EXPECT_FALSE(shows("unreadable"));
  session().run().cancel();
  settle(*view_);
  EXPECT_TRUE(shows("unreadable"));
}

}  // namespace
}  // namespace tessaly
