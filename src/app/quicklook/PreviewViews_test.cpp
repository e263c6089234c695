// What a user sees and can do in the preview of each kind of content.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>

#include "app/quicklook/PreviewWindowScene_test.h"
#include "support/PointerMoves.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

QImage painted(int width, int height, QColor color) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(color);
  return image;
}

QString numbered(int lines) {
  QString text;
  for (int i = 1; i <= lines; ++i) text += QStringLiteral("line %1\n").arg(i);
  return text;
}

class PreviewViews : public PreviewWindowScene {
 protected:
  // The texts of all visible items with this object name, from top to bottom.
  std::vector<std::string> texts(const QString& name, const char* property = "text") {
    settle();
    std::map<double, std::string> byHeight;
    for (const QQuickItem* found : items(name))
      byHeight[found->mapToScene(QPointF()).y()] =
          found->property(property).toString().toStdString();
    std::vector<std::string> inOrder;
    for (const auto& entry : byHeight) inOrder.push_back(entry.second);
    return inOrder;
  }

  // All visible views.
  std::vector<std::string> views() {
    std::vector<std::string> visible;
    for (const char* name :
         {"loadingView", "factsView", "imageView", "textView", "pagesView", "folderView"})
      if (shows(QLatin1String(name))) visible.emplace_back(name);
    return visible;
  }

  bool hasText(const QString& name, const std::string& expected) {
    const auto all = texts(name);
    return std::find(all.begin(), all.end(), expected) != all.end();
  }

  QRectF place(const QString& name) {
    const QQuickItem* found = item(name);
    return found != nullptr ? found->mapRectToScene(found->boundingRect()) : QRectF();
  }

  QColor colorAt(QPointF point) { return window().grabWindow().pixelColor(point.toPoint()); }

  double scrolledTo(const QString& list) {
    const QQuickItem* view = item(list);
    return view->property("contentY").toDouble() - view->property("originY").toDouble();
  }
};

TEST_F(PreviewViews, an_image_is_shown_at_its_own_size_which_is_told) {
  show(contentOf("/red.png", ImagePreview{painted(300, 200, Qt::red), {300, 200}}));
  EXPECT_THAT(views(), ElementsAre("imageView"));
  EXPECT_EQ(text("name"), "red.png");
  EXPECT_EQ(text("size"), "2.0 KB");
  EXPECT_EQ(text("noticeText"), QString::fromUtf8("300 × 200 pixels"));
  EXPECT_EQ(spokenName("imageView"), QString::fromUtf8("Image, 300 × 200 pixels"));
  EXPECT_EQ(place("picture").size(), QSizeF(300, 200));
  EXPECT_EQ(colorAt(place("picture").center()), QColor(Qt::red));
  EXPECT_EQ(colorAt(place("picture").topLeft() + QPointF(1, 1)), QColor(Qt::red));
  EXPECT_NE(colorAt(place("picture").topLeft() - QPointF(2, 2)), QColor(Qt::red));
}

TEST_F(PreviewViews, an_image_is_never_scaled_up) {
  show(contentOf("/dot.png", ImagePreview{painted(10, 10, Qt::red), {10, 10}}));
  window().resize(700, 600);
  EXPECT_EQ(place("picture").size(), QSizeF(10, 10));
}

TEST_F(PreviewViews, an_image_is_scaled_down_with_its_aspect_ratio) {
  show(contentOf("/wide.png", ImagePreview{painted(1000, 500, Qt::blue), {1000, 500}}));
  window().resize(440, 400);
  EXPECT_EQ(place("picture").size(), QSizeF(400, 200));
  EXPECT_EQ(colorAt(place("picture").center()), QColor(Qt::blue));
  window().resize(700, 53 + 32 + 40 + 100);
  EXPECT_EQ(place("picture").size(), QSizeF(200, 100));
}

TEST_F(PreviewViews, a_new_image_replaces_the_old_one) {
  show(contentOf("/red.png", ImagePreview{painted(300, 200, Qt::red), {300, 200}}));
  show(contentOf("/green.png", ImagePreview{painted(100, 150, Qt::green), {100, 150}}));
  EXPECT_EQ(place("picture").size(), QSizeF(100, 150));
  EXPECT_EQ(colorAt(place("picture").center()), QColor(Qt::green));
}

TEST_F(PreviewViews, the_lines_of_a_text_are_in_a_monospaced_font) {
  show(contentOf("/a.txt", TextPreview{"one\n\n<b>two</b>\n", true}));
  EXPECT_THAT(views(), ElementsAre("textView"));
  EXPECT_THAT(texts("line"), ElementsAre("one", "", "<b>two</b>"));
  const QQuickItem* line = items("line").front();
  EXPECT_TRUE(QFontInfo(line->property("font").value<QFont>()).fixedPitch());
  EXPECT_FALSE(shows("noticeText"));
  EXPECT_EQ(spokenName("textView"), "Text of a.txt");
}

TEST_F(PreviewViews, a_text_says_that_it_continues) {
  show(contentOf("/a.txt", TextPreview{"one", false}));
  EXPECT_EQ(text("noticeText"), "Only the beginning of the file is shown");
}

TEST_F(PreviewViews, long_lines_of_a_text_are_wrapped_in_the_window) {
  show(contentOf("/a.txt", TextPreview{QString(1000, u'x'), true}));
  EXPECT_LT(place("line").right(), window().width());
  EXPECT_GT(place("line").height(), 100);
}

TEST_F(PreviewViews, keys_scroll_a_text) {
  show(contentOf("/a.txt", TextPreview{numbered(5000), true}));
  EXPECT_EQ(texts("line").front(), "line 1");
  EXPECT_EQ(scrolledTo("textView"), 0);

  press(Qt::Key_Up);
  EXPECT_EQ(scrolledTo("textView"), 0);
  press(Qt::Key_Down);
  EXPECT_EQ(scrolledTo("textView"), 40);
  press(Qt::Key_Up);
  EXPECT_EQ(scrolledTo("textView"), 0);

  press(Qt::Key_PageDown);
  EXPECT_EQ(scrolledTo("textView"), item("textView")->height() - 40);
  press(Qt::Key_PageUp);
  EXPECT_EQ(scrolledTo("textView"), 0);

  press(Qt::Key_End);
  EXPECT_TRUE(hasText("line", "line 5000"));
  EXPECT_TRUE(item("textView")->property("atYEnd").toBool());
  press(Qt::Key_Home);
  EXPECT_TRUE(hasText("line", "line 1"));
  EXPECT_TRUE(item("textView")->property("atYBeginning").toBool());
}

TEST_F(PreviewViews, the_wheel_scrolls_a_text) {
  show(contentOf("/a.txt", TextPreview{numbered(500), true}));
  const QPointF middle = place("textView").center();
  for (int notch = 1; notch <= 5; ++notch) {
    turnWheel(window(), middle, {0, -120});
    EXPECT_EQ(scrolledTo("textView"), 60 * notch);
  }
  // Like a touchpad.
  const auto turn = [&](Qt::ScrollPhase phase, QPoint by) {
    QWheelEvent wheel(middle, window().mapToGlobal(middle), by, by, Qt::NoButton, Qt::NoModifier,
                      phase, false, Qt::MouseEventSynthesizedBySystem);
    QCoreApplication::sendEvent(&window(), &wheel);
  };
  turn(Qt::ScrollBegin, {});
  for (int i = 0; i < 5; ++i) turn(Qt::ScrollUpdate, {0, -7});
  turn(Qt::ScrollEnd, {});
  EXPECT_EQ(scrolledTo("textView"), 300 + 35);
  turnWheel(window(), middle, {0, 12000});
  EXPECT_EQ(scrolledTo("textView"), 0);
}

TEST_F(PreviewViews, a_finger_scrolls_a_text_and_the_mouse_does_not) {
  show(contentOf("/a.txt", TextPreview{numbered(500), true}));
  const QPoint middle = place("textView").center().toPoint();
  pullByMouse(window(), middle, {0, -100});
  EXPECT_EQ(scrolledTo("textView"), 0);
  pullByFinger(window(), middle, {0, -100});
  EXPECT_GT(scrolledTo("textView"), 20);
}

TEST_F(PreviewViews, each_text_starts_at_its_beginning) {
  show(contentOf("/a.txt", TextPreview{numbered(500), true}));
  press(Qt::Key_End);
  show(contentOf("/b.txt", TextPreview{numbered(400), true}));
  EXPECT_EQ(texts("line").front(), "line 1");
  EXPECT_EQ(scrolledTo("textView"), 0);
}

TEST_F(PreviewViews, every_content_starts_at_its_beginning) {
  show(contentOf("/t.txt", TextPreview{numbered(500), true}));
  EXPECT_EQ(scrolledTo("textView"), 0);
  show(contentOf("/p.pdf", PagesPreview{std::vector<QImage>(3, painted(900, 1200, Qt::red)), 3}));
  EXPECT_EQ(scrolledTo("pagesView"), 0);
  FolderPreview folder;
  folder.items.resize(100);
  show(contentOf("/f", folder));
  EXPECT_EQ(scrolledTo("folderView"), 0);
  show(contentOf("/m.mp3", MediaPreview{std::vector(40, std::pair<QString, QString>("a", "b"))}));
  EXPECT_EQ(scrolledTo("factsView"), 0);
}

TEST_F(PreviewViews, content_starts_at_its_beginning_in_a_new_window_too) {
  show(contentOf("/p.pdf", PagesPreview{std::vector<QImage>(3, painted(900, 1200, Qt::red)), 3}));
  EXPECT_EQ(scrolledTo("pagesView"), 0);
  press(Qt::Key_End);
  press(Qt::Key_Space);
  show(contentOf("/m.mp3", MediaPreview{std::vector(40, std::pair<QString, QString>("a", "b"))}));
  EXPECT_EQ(scrolledTo("factsView"), 0);
  press(Qt::Key_End);
  press(Qt::Key_Space);
  show(contentOf("/q.pdf", PagesPreview{std::vector<QImage>(3, painted(900, 1200, Qt::red)), 3}));
  EXPECT_EQ(scrolledTo("pagesView"), 0);
}

TEST_F(PreviewViews, a_new_file_starts_at_its_beginning_after_the_previous_was_scrolled) {
  const std::vector<QImage> pages(3, painted(900, 1200, Qt::red));
  show(contentOf("/p.pdf", PagesPreview{pages, 3}));
  press(Qt::Key_End);
  ASSERT_GT(scrolledTo("pagesView"), 0);
  show(contentOf("/q.pdf", PagesPreview{pages, 3}));
  EXPECT_EQ(scrolledTo("pagesView"), 0);
}

TEST_F(PreviewViews, the_scroll_position_stays_when_the_window_grows) {
  show(contentOf("/t.txt", TextPreview{numbered(500), true}));
  press(Qt::Key_PageDown);
  const double before = scrolledTo("textView");
  window().resize(window().size() + QSize(0, 10));
  EXPECT_EQ(scrolledTo("textView"), before);
}

TEST_F(PreviewViews, only_the_visible_lines_of_a_text_are_laid_out) {
  show(contentOf("/a.txt", TextPreview{numbered(5000), true}));
  EXPECT_LT(items("line").size(), 500U);
}

TEST_F(PreviewViews, a_short_text_has_no_scroll_bar) {
  show(contentOf("/a.txt", TextPreview{"one", true}));
  EXPECT_FALSE(shows("scrollBar"));
  show(contentOf("/b.txt", TextPreview{numbered(500), true}));
  EXPECT_TRUE(shows("scrollBar"));
}

TEST_F(PreviewViews, the_pages_of_a_document_are_below_each_other) {
  show(contentOf("/a.pdf",
                 PagesPreview{{painted(400, 300, Qt::red), painted(200, 100, Qt::blue)}, 2}));
  EXPECT_THAT(views(), ElementsAre("pagesView"));
  EXPECT_EQ(text("noticeText"), "2 pages");
  window().resize(600, 700);
  settle();
  const auto pages = items("page");
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages[0]->size(), QSizeF(400, 300));
  EXPECT_EQ(pages[1]->size(), QSizeF(200, 100));
  EXPECT_GT(pages[1]->y(), pages[0]->y() + 300);
  EXPECT_EQ(colorAt(pages[0]->mapToScene(QPointF(200, 150))), QColor(Qt::red));
  EXPECT_EQ(colorAt(pages[1]->mapToScene(QPointF(100, 50))), QColor(Qt::blue));
  EXPECT_EQ(spokenName("pagesView"), "Document, 2 pages");
}

TEST_F(PreviewViews, wide_pages_are_scaled_to_the_window) {
  show(contentOf("/a.pdf", PagesPreview{{painted(800, 400, Qt::red)}, 9}));
  window().resize(440, 400);
  EXPECT_EQ(place("page").size(), QSizeF(400, 200));
  EXPECT_EQ(text("noticeText"), "9 pages, only the first 1 shown");
}

TEST_F(PreviewViews, keys_scroll_a_document) {
  show(contentOf("/a.pdf",
                 PagesPreview{{painted(400, 900, Qt::red), painted(400, 900, Qt::blue)}, 2}));
  press(Qt::Key_End);
  EXPECT_EQ(colorAt(place("pagesView").center()), QColor(Qt::blue));
  press(Qt::Key_Home);
  EXPECT_EQ(colorAt(place("pagesView").center()), QColor(Qt::red));
}

TEST_F(PreviewViews, a_sound_shows_its_facts) {
  show(contentOf("/a.mp3", MediaPreview{{{"Duration", "3:25"}, {"Channels", "2"}}}));
  EXPECT_THAT(views(), ElementsAre("factsView"));
  EXPECT_EQ(text("headline"), "a.mp3");
  EXPECT_EQ(item("headlineSymbol")->property("name").toString(), "music.note");
  EXPECT_THAT(texts("factName"), ElementsAre("Duration", "Channels", "Kind", "Size", "Where"));
  EXPECT_THAT(texts("factValue"), ElementsAre("3:25", "2", "File", "2.0 KB (2,048 bytes)", "/"));
}

TEST_F(PreviewViews, a_folder_lists_its_items) {
  show(contentOf("/home", FolderPreview{{{"<b>", true, 0}, {"caf\xe9.zip", false, 1024}}, 7}));
  EXPECT_THAT(views(), ElementsAre("folderView"));
  EXPECT_THAT(texts("itemName"), ElementsAre("<b>", "caf\xef\xbf\xbd.zip"));
  EXPECT_THAT(texts("itemSize"), ElementsAre("", "1.0 KB"));
  EXPECT_EQ(text("noticeText"), "7 items, only the first 2 shown");
  EXPECT_FALSE(shows("size"));
  EXPECT_EQ(spokenName("folderView"), "Folder, 7 items, only the first 2 shown");
}

TEST_F(PreviewViews, other_content_shows_its_facts) {
  PreviewContent content = contentOf("/home/ada/a.bin", FactsOnly{});
  content.facts.linkTarget = "/b";
  show(content);
  EXPECT_THAT(views(), ElementsAre("factsView"));
  EXPECT_EQ(text("headline"), "a.bin");
  EXPECT_EQ(item("headlineSymbol")->property("name").toString(), "doc");
  EXPECT_THAT(texts("factName"), ElementsAre("Kind", "Size", "Links to", "Where"));
  EXPECT_THAT(texts("factValue"), ElementsAre("File", "2.0 KB (2,048 bytes)", "/b", "/home/ada"));
  EXPECT_EQ(spokenName("factsView"), "Details of a.bin");
  EXPECT_FALSE(shows("noticeText"));
}

TEST_F(PreviewViews, a_file_that_cannot_be_shown_has_a_reason) {
  show(contentOf("/a.png", PreviewFailure{"The image is damaged."}));
  EXPECT_THAT(views(), ElementsAre("factsView"));
  EXPECT_EQ(text("headline"), "The image is damaged.");
  EXPECT_EQ(item("headlineSymbol")->property("name").toString(), "exclamationmark.triangle.fill");
  EXPECT_TRUE(hasText("factValue", "Image"));
  EXPECT_EQ(spokenName("factsView"), "The image is damaged.");
}

TEST_F(PreviewViews, the_view_changes_with_the_kind_of_content) {
  show(contentOf("/a.png", PreviewFailure{"No."}));
  show(contentOf("/a.txt", TextPreview{"one", true}));
  EXPECT_THAT(views(), ElementsAre("textView"));
  show(contentOf("/home", FolderPreview{}));
  EXPECT_THAT(views(), ElementsAre("folderView"));
  EXPECT_EQ(text("noticeText"), "0 items");
}

class EveryPreview : public PreviewViews {
 protected:
  const std::vector<PreviewContent> oneOfEach_ = {
      contentOf("/i.png", ImagePreview{painted(3, 3, Qt::red), {3, 3}}),
      contentOf("/t.txt", TextPreview{numbered(100), true}),
      contentOf("/p.pdf", PagesPreview{{painted(3, 3, Qt::red)}, 1}),
      contentOf("/m.mp3", MediaPreview{}),
      contentOf("/f", FolderPreview{{{"a", false, 1}}, 1}),
      contentOf("/o", FactsOnly{}),
      contentOf("/x", PreviewFailure{"No."})};
};

TEST_F(EveryPreview, space_closes_every_preview) {
  for (const PreviewContent& content : oneOfEach_) {
    show(content);
    press(Qt::Key_Space);
    EXPECT_FALSE(isOpen()) << content.facts.name;
  }
}

TEST_F(EveryPreview, tab_reaches_every_preview_from_the_button) {
  for (const PreviewContent& content : oneOfEach_) {
    show(content);
    const QQuickItem* view = window().activeFocusItem();
    press(Qt::Key_Tab);
    EXPECT_TRUE(item("open")->hasActiveFocus()) << content.facts.name;
    press(Qt::Key_Tab);
    EXPECT_EQ(window().activeFocusItem(), view) << content.facts.name;
    EXPECT_NE(window().activeFocusItem(), item("open")) << content.facts.name;
  }
}

// Every visible item below `top` with this property.
std::vector<QQuickItem*> itemsWith(const char* property, QQuickItem* top) {
  std::vector<QQuickItem*> found;
  if (!top->isVisible()) return found;
  if (top->property(property).isValid()) found.push_back(top);
  for (QQuickItem* child : top->childItems())
    for (QQuickItem* below : itemsWith(property, child)) found.push_back(below);
  return found;
}

TEST_F(EveryPreview, texts_from_files_are_shown_as_plain_text) {
  for (const PreviewContent& content : oneOfEach_) {
    show(content);
    const auto shown = itemsWith("textFormat", window().contentItem());
    EXPECT_FALSE(shown.empty());
    for (const QQuickItem* found : shown)
      EXPECT_EQ(found->property("textFormat").toInt(), Qt::PlainText)
          << content.facts.name << " " << found->objectName().toStdString();
  }
}

}  // namespace
}  // namespace tessaly
