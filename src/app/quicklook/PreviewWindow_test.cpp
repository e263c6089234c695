#include "app/quicklook/PreviewWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>

#include "app/quicklook/PreviewWindowScene_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Queue = Dispatch::Queue;

class PreviewWindowTest : public PreviewWindowScene {
 protected:
  PreviewWindowTest() {
    for (const char* path : {"/a.txt", "/b.txt"})
      contents_[path] = contentOf(path, TextPreview{QString::fromLatin1(path), true});
  }

  QQuickWindow& showText() { return show(contents_["/a.txt"]); }
};

TEST_F(PreviewWindowTest, the_window_is_not_created_before_it_is_needed) {
  EXPECT_EQ(panel_->window(), nullptr);
}

TEST_F(PreviewWindowTest, the_window_appears_with_its_content) {
  look_->show("/a.txt");
  EXPECT_FALSE(isOpen());
  dispatch_.step(Queue::userInitiated);
  EXPECT_FALSE(isOpen());
  dispatch_.step(Queue::main);
  ASSERT_TRUE(isOpen());
  EXPECT_TRUE(shows("textView"));
  EXPECT_EQ(window().title(), "a.txt");
  EXPECT_THAT(read_, ElementsAre("/a.txt"));
}

TEST_F(PreviewWindowTest, the_window_has_the_keyboard_focus_and_is_over_its_owner) {
  showText();
  EXPECT_EQ(QGuiApplication::focusWindow(), &window());
  EXPECT_EQ(window().transientParent(), &owner_);
  EXPECT_TRUE(item("textView")->hasActiveFocus());
}

TEST_F(PreviewWindowTest, the_window_appears_without_content_that_takes_long) {
  look_->show("/a.txt");
  dispatch_.advance(PreviewWindow::patience - std::chrono::milliseconds(1));
  dispatch_.drain(Queue::main);
  EXPECT_FALSE(isOpen());
  dispatch_.advance(std::chrono::milliseconds(1));
  dispatch_.drain(Queue::main);
  ASSERT_TRUE(isOpen());
  EXPECT_TRUE(shows("loadingView"));
  EXPECT_EQ(window().title(), "a.txt");
  EXPECT_EQ(spokenName("loadingView"), "Loading a.txt");
  EXPECT_FALSE(shows("textView"));

  dispatch_.drainAll();
  EXPECT_TRUE(shows("textView"));
  EXPECT_FALSE(shows("loadingView"));
}

TEST_F(PreviewWindowTest, a_window_closed_while_waiting_does_not_appear) {
  showText();
  press(Qt::Key_Escape);
  dispatch_.advance(PreviewWindow::patience);
  dispatch_.drainAll();
  EXPECT_FALSE(isOpen());
}

TEST_F(PreviewWindowTest, space_escape_and_command_w_close_the_window) {
  for (const auto& [key, modifiers] :
       {std::pair(Qt::Key_Space, Qt::NoModifier), std::pair(Qt::Key_Escape, Qt::NoModifier),
        std::pair(Qt::Key_W, Qt::ControlModifier)}) {
    showText();
    ASSERT_TRUE(isOpen());
    press(key, modifiers);
    EXPECT_FALSE(isOpen()) << key;
  }
}

TEST_F(PreviewWindowTest, command_q_reaches_the_program) {
  showText();
  const QSignalSpy quits(qmlEngine(item("textView")), &QQmlEngine::quit);
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(quits.count(), 1);
}

TEST_F(PreviewWindowTest, the_same_keys_close_the_window_while_it_loads) {
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Escape}) {
    look_->show("/a.txt");
    dispatch_.advance(PreviewWindow::patience);
    dispatch_.drain(Queue::main);
    ASSERT_TRUE(isOpen());
    press(key);
    EXPECT_FALSE(isOpen()) << key;
  }
}

TEST_F(PreviewWindowTest, the_close_button_closes_the_window) {
  showText();
  QCloseEvent pressed;
  QCoreApplication::sendEvent(&window(), &pressed);
  EXPECT_FALSE(isOpen());
}

TEST_F(PreviewWindowTest, the_window_stays_while_the_key_that_opened_it_repeats) {
  showText();
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
  QCoreApplication::sendEvent(&window(), &repeated);
  EXPECT_TRUE(isOpen());
}

TEST_F(PreviewWindowTest, closing_returns_the_keyboard_focus_to_the_owner) {
  showText();
  ASSERT_EQ(QGuiApplication::focusWindow(), &window());
  press(Qt::Key_Space);
  QCoreApplication::processEvents();
  EXPECT_EQ(QGuiApplication::focusWindow(), &owner_);
}

TEST_F(PreviewWindowTest, the_window_closes_with_its_owner) {
  showText();
  owner_.hide();
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(owner_.isVisible());
}

TEST_F(PreviewWindowTest, the_window_does_not_appear_while_its_owner_is_hidden) {
  look_->show("/a.txt");
  owner_.hide();
  dispatch_.advance(PreviewWindow::patience);
  dispatch_.drainAll();
  EXPECT_FALSE(isOpen());
}

TEST_F(PreviewWindowTest, a_closed_window_opens_again) {
  showText();
  press(Qt::Key_Space);
  show(contents_["/b.txt"]);
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(text("line"), "/b.txt");
}

TEST_F(PreviewWindowTest, another_file_is_shown_in_the_same_window) {
  const QQuickWindow* first = &showText();
  look_->show("/b.txt");
  EXPECT_EQ(&window(), first);
  EXPECT_EQ(window().title(), "b.txt");
  EXPECT_TRUE(shows("loadingView"));
  EXPECT_FALSE(shows("textView"));
  dispatch_.drainAll();
  EXPECT_EQ(text("line"), "/b.txt");
  EXPECT_TRUE(item("textView")->hasActiveFocus());
}

TEST_F(PreviewWindowTest, a_result_that_arrives_after_a_newer_request_is_dropped) {
  look_->show("/a.txt");
  dispatch_.step(Queue::userInitiated);
  look_->show("/b.txt");
  dispatch_.drain(Queue::main);
  EXPECT_EQ(panel_->state().body(), PreviewScreen::Kind::Loading);
  EXPECT_EQ(panel_->state().name(), "b.txt");
  dispatch_.drainAll();
  EXPECT_EQ(text("line"), "/b.txt");
}

TEST_F(PreviewWindowTest, a_file_that_is_no_longer_requested_is_not_read) {
  look_->show("/a.txt");
  look_->show("/b.txt");
  dispatch_.drainAll();
  EXPECT_THAT(read_, ElementsAre("/b.txt"));
}

TEST_F(PreviewWindowTest, the_same_file_is_read_again_on_a_new_request) {
  showText();
  contents_["/a.txt"].body = TextPreview{"changed", true};
  look_->show("/a.txt");
  dispatch_.drainAll();
  EXPECT_EQ(text("line"), "changed");
}

TEST_F(PreviewWindowTest, a_newer_request_cancels_the_reader) {
  std::function<bool()> isCancelled;
  whileReading_ = [&](const std::function<bool()>& asked) {
    isCancelled = asked;
    EXPECT_FALSE(isCancelled());
    if (read_.size() > 1) return;
    look_->show("/b.txt");
    EXPECT_TRUE(isCancelled());
  };
  look_->show("/a.txt");
  dispatch_.drainAll();
  EXPECT_THAT(read_, ElementsAre("/a.txt", "/b.txt"));
  EXPECT_EQ(text("line"), "/b.txt");
}

TEST_F(PreviewWindowTest, closing_cancels_the_reader_and_drops_its_result) {
  look_->show("/a.txt");
  dispatch_.advance(PreviewWindow::patience);
  dispatch_.drain(Queue::main);
  whileReading_ = [&](const std::function<bool()>& isCancelled) {
    press(Qt::Key_Escape);
    EXPECT_TRUE(isCancelled());
  };
  dispatch_.drainAll();
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(panel_->state().body(), PreviewScreen::Kind::Nothing);
}

TEST_F(PreviewWindowTest, a_closed_window_holds_no_content) {
  show(contentOf("/p.png", ImagePreview{QImage(10, 10, QImage::Format_RGB32), {10, 10}}));
  EXPECT_EQ(panel_->state().pictureCount(), 1);
  press(Qt::Key_Escape);
  EXPECT_EQ(panel_->state().pictureCount(), 0);
}

TEST_F(PreviewWindowTest, the_window_may_be_destroyed_while_a_result_is_on_its_way) {
  std::function<bool()> isCancelled;
  whileReading_ = [&](const std::function<bool()>& asked) { isCancelled = asked; };
  look_->show("/a.txt");
  dispatch_.step(Queue::userInitiated);
  look_.reset();
  panel_.reset();
  EXPECT_TRUE(isCancelled());
  dispatch_.drainAll();
}

TEST_F(PreviewWindowTest, nothing_happens_without_a_source_or_an_item) {
  panel_->makeKeyAndOrderFront();
  const QuickLook empty(nullptr);
  panel_->setDataSource(&empty);
  panel_->makeKeyAndOrderFront();
  dispatch_.drainAll();
  EXPECT_THAT(read_, IsEmpty());
  EXPECT_EQ(panel_->window(), nullptr);
}

TEST_F(PreviewWindowTest, the_window_closes_when_its_source_is_removed) {
  showText();
  look_.reset();
  EXPECT_FALSE(isOpen());
}

TEST_F(PreviewWindowTest, the_reader_gets_the_bytes_of_a_name_that_is_not_utf8) {
  const std::string path = "/caf\xe9\n.txt";
  show(contentOf(path, TextPreview{"x", true}));
  EXPECT_THAT(read_, ElementsAre(path));
  const QString shown = QString::fromUtf8("caf\xef\xbf\xbd\xef\xbf\xbd.txt");
  EXPECT_EQ(window().title(), shown);
  EXPECT_EQ(text("name"), shown);
}

TEST_F(PreviewWindowTest, the_button_opens_the_item_in_its_application_and_closes_the_window) {
  const std::string path = "/caf\xe9";
  show(contentOf(path, FactsOnly{}));
  QQuickItem* button = item("open");
  ASSERT_NE(button, nullptr);
  const QPoint middle =
      button->mapToScene(QPointF(button->width() / 2, button->height() / 2)).toPoint();
  QTest::mouseClick(&window(), Qt::LeftButton, {}, middle);
  EXPECT_THAT(opened_, ElementsAre(path));
  EXPECT_FALSE(isOpen());
}

TEST_F(PreviewWindowTest, tab_reaches_the_button_and_space_presses_it) {
  showText();
  press(Qt::Key_Tab);
  EXPECT_TRUE(item("open")->hasActiveFocus());
  press(Qt::Key_Tab);
  EXPECT_TRUE(item("textView")->hasActiveFocus());
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_THAT(opened_, ElementsAre("/a.txt"));
}

TEST_F(PreviewWindowTest, the_content_of_each_new_file_gets_the_keyboard_focus) {
  showText();
  press(Qt::Key_Tab);
  show(contentOf("/folder", FolderPreview{}));
  EXPECT_TRUE(item("folderView")->hasActiveFocus());
}

TEST_F(PreviewWindowTest, there_is_no_button_if_nothing_can_be_opened) {
  look_.reset();
  panel_ = std::make_unique<PreviewWindow>(
      engine_, dispatch_,
      [this](const std::string& path, const std::function<bool()>&) { return contents_.at(path); });
  look_ = std::make_unique<QuickLook>(panel_.get());
  showText();
  EXPECT_FALSE(shows("open"));
}

TEST_F(PreviewWindowTest, the_window_opens_in_the_middle_of_its_owner) {
  owner_.setGeometry(150, 120, 500, 500);
  show(contentOf("/folder", FolderPreview{}));
  EXPECT_EQ(window().geometry().center(), owner_.geometry().center());
}

TEST_F(PreviewWindowTest, a_size_set_by_the_user_stays_until_the_window_is_closed) {
  const QSize size = showText().size();
  window().resize(500, 400);
  show(contents_["/b.txt"]);
  EXPECT_EQ(window().size(), QSize(500, 400));
  press(Qt::Key_Space);
  showText();
  EXPECT_EQ(window().size(), size);
}

TEST_F(PreviewWindowTest, the_window_takes_the_size_of_late_content) {
  contents_["/p.png"] =
      contentOf("/p.png", ImagePreview{QImage(100, 50, QImage::Format_RGB32), {100, 50}});
  const auto showEmpty = [this] {
    look_->show("/p.png");
    dispatch_.advance(PreviewWindow::patience);
    dispatch_.drain(Queue::main);
  };
  showEmpty();
  const QSize empty = window().size();
  dispatch_.drainAll();
  EXPECT_LT(window().size().height(), empty.height());
  press(Qt::Key_Escape);

  showEmpty();
  window().resize(450, 500);
  dispatch_.drainAll();
  EXPECT_EQ(window().size(), QSize(450, 500));
}

}  // namespace
}  // namespace tessaly
