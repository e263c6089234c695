// No screen on Linux has a word of macOS.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QStandardItemModel>
#include <QUrl>

#include "fixture/FixtureWindow.h"
#include "fixture/ShownTexts.h"
#include "look/Wording.h"
#include "picture/PictureWindow.h"
#include "support/SystemWords.h"
#include "support/WindowItems.h"

#ifndef __APPLE__

namespace tessaly {

class StateWithModel : public QObject {
  Q_OBJECT
  Q_PROPERTY(QStandardItemModel* rows READ rows CONSTANT)

 public:
  QStandardItemModel* rows() { return &rows_; }

 private:
  QStandardItemModel rows_;
};

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::IsSupersetOf;

using Texts = std::vector<ShownText>;

// The texts among `texts` that must not be shown here, with their places.
std::set<std::string> wrongIn(const Texts& texts) {
  std::set<std::string> wrong;
  for (const ShownText& shown : texts) {
    if (wordOfMacosIn(shown.text)) wrong.insert(shown.place + ": " + shown.text);
  }
  return wrong;
}

std::set<std::string> wordsOf(const Texts& texts) {
  std::set<std::string> words;
  for (const ShownText& shown : texts) words.insert(shown.text);
  return words;
}

TEST(ShownTexts, shown_texts_are_found_in_every_kind_of_property) {
  QQmlEngine engine;
  QQmlComponent component(&engine);
  component.setData(R"(
      import QtQuick
      import QtQuick.Window
      import Tessaly.Controls
      Window {
          title: "Mac 1"
          readonly property list<QtObject> parts: [QtObject { objectName: "Mac unseen" }]
          Text { text: "Mac 2" }
          Item { visible: false; Text { text: "Mac 3" } }
          Item { Accessible.role: Accessible.Button; Accessible.name: "Mac 4" }
          Item { Accessible.role: Accessible.Button; Accessible.description: "Mac 5" }
          Item { property string placeholderText: "Mac 6" }
          MarrowButton { text: "a"; MarrowToolTip { text: "Mac 7" } }
          Item { Repeater { model: ["Mac 8"]; Text { required property string modelData; text: modelData } } }
      })",
                    QUrl());
  const std::unique_ptr<QObject> window(component.create());
  ASSERT_NE(window, nullptr) << component.errorString().toStdString();
  const std::set<std::string> words = wordsOf(textsBelow(*window));
  for (const char* word : {"Mac 1", "Mac 2", "Mac 3", "Mac 4", "Mac 5", "Mac 6", "Mac 7", "Mac 8"})
    EXPECT_THAT(words, Contains(word));
  EXPECT_EQ(words.count("Mac unseen"), 0U);
}

TEST(ShownTexts, shown_texts_include_rows_that_no_view_shows) {
  QObject owner;
  auto* const model = new QStandardItemModel(&owner);
  model->appendRow(new QStandardItem("Mac 9"));
  EXPECT_THAT(wordsOf(textsBelow(owner)), Contains("Mac 9"));
}

TEST(ShownTexts, shown_texts_include_models_that_are_members_of_a_state) {
  StateWithModel state;
  state.rows()->appendRow(new QStandardItem("Mac 10"));
  EXPECT_THAT(wordsOf(textsBelow(state)), Contains("Mac 10"));
}

TEST(ShownTexts, shown_texts_include_everything_passed_to_the_desktop) {
  FakeMachine machine;
  machine.statusBar.setLabel({"", "1"});
  machine.statusBar.setMenu({{1, StatusBarExtra::Entry::Kind::text, "2"}});
  machine.notifications.post({.identifier = "", .title = "3", .body = "4"});
  machine.folderPanel.chooseFolder({.prompt = "5", .message = "6"});
  machine.savePanel.chooseFile({.fileName = "7", .extension = ""});
  EXPECT_THAT(wordsOf(textsOnDesktop(machine)), IsSupersetOf({"1", "2", "3", "4", "5", "6", "7"}));
}

class ScreenWords : public testing::TestWithParam<QString> {};

TEST_P(ScreenWords, no_screen_has_a_word_of_macos) {
  PictureWindow window(*PictureWindow::screenNamed(GetParam()));
  window.picture();
  const Texts texts = textsBelow(window.fixture().window());
  EXPECT_THAT(wrongIn(texts), IsEmpty());
  // The texts include bars, menus and invisible items.
  const Wording& words = Wording::current();
  EXPECT_THAT(wordsOf(texts), IsSupersetOf({words.searchKeys, words.scanWholeDisk, words.reveal,
                                            words.gate.heading, std::string("Ctrl+F")}));
}

std::vector<QString> allNames() {
  const QStringList names = PictureWindow::names();
  return {names.begin(), names.end()};
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenWords, testing::ValuesIn(allNames()),
                         [](const auto& screen) {
                           return QString(screen.param).replace(u'-', u'_').toStdString();
                         });

DiskNode wholeDisk() {
  const auto folder = [](const std::string& name, const std::string& path, std::int64_t size,
                         const std::vector<DiskNode>& children) {
    DiskNode::Fields fields;
    fields.name = name;
    fields.path = path;
    fields.size = size;
    fields.isDir = true;
    fields.kind = FileKind::folder;
    return DiskNode(fields, children);
  };
  DiskNode::Fields film;
  film.name = "film.mkv";
  film.path = "/home/film.mkv";
  film.size = 3000000000;
  return folder("Macintosh HD", "/", film.size,
                {folder("home", "/home", film.size, {DiskNode(film)})});
}

// The program after a scan of "/", with a nearly full disk.
class WordsOfTheWholeDisk : public testing::Test {
 protected:
  WordsOfTheWholeDisk()
      : fixture_(machine_, "/home/ada", [this](Application::Services& services) {
          machine_.disk = {.total = 1000, .used = 990, .free = 10, .usedPercent = 99};
          // The engines of the program would look through the real disk.
          services.analysis.emplace();
          services.walk = [](const std::string& root, const DiskScanner::Callbacks& callbacks,
                             const DiskScanner::Options&) {
            if (callbacks.progress) callbacks.progress("Scanning " + root);
            return wholeDisk();
          };
        }) {
    session().scan("/");
    look();
  }

  ScanSession& session() { return fixture_.session(); }

  // Finishes all pending work, and reads the texts.
  void look() {
    machine_.dispatch.drainAll();
    settle(fixture_.window());
    const Texts inWindow = textsBelow(fixture_.window());
    const Texts onDesktop = textsOnDesktop(machine_);
    for (const Texts& texts : {inWindow, onDesktop}) {
      for (const std::string& wrong : wrongIn(texts)) wrong_.insert(wrong);
      for (const ShownText& shown : texts) seen_.insert(shown.text);
    }
  }

  FakeMachine machine_;
  FixtureWindow fixture_;
  std::set<std::string> wrong_;
  std::set<std::string> seen_;
};

TEST_F(WordsOfTheWholeDisk, the_top_folder_has_the_name_that_the_system_gives_it) {
  EXPECT_THAT(seen_, Contains("System Disk"));
  EXPECT_THAT(wrong_, IsEmpty());
}

TEST_F(WordsOfTheWholeDisk, texts_suit_the_system_in_every_mode_of_the_map) {
  for (const VizMode mode : {VizMode::treemap, VizMode::list, VizMode::grew, VizMode::duplicates,
                             VizMode::compare, VizMode::largest, VizMode::clones, VizMode::history,
                             VizMode::safe, VizMode::aliases, VizMode::cloud}) {
    session().shown().setVizMode(mode);
    look();
  }
  EXPECT_THAT(seen_, Contains("Shared Blocks"));
  EXPECT_THAT(wrong_, IsEmpty());
}

TEST_F(WordsOfTheWholeDisk, texts_suit_the_system_in_every_pane_and_card) {
  for (const MainPane pane : {MainPane::apps, MainPane::monitor, MainPane::map}) {
    session().shown().setPane(pane);
    look();
  }
  for (const bool isOpen : {true, false}) {
    session().shown().setSearchOpen(isOpen);
    look();
    session().shown().setAiOpen(isOpen);
    look();
    session().shown().setOcrOpen(isOpen);
    look();
  }
  EXPECT_THAT(wrong_, IsEmpty());
}

TEST_F(WordsOfTheWholeDisk, texts_suit_the_system_in_every_operation_on_the_top_folder) {
  const DiskNode top = *session().navigation().current();
  session().shown().setMenuNode(top);
  look();
  session().shown().setMenuNode(std::nullopt);
  session().cleanupQueue().addToQueue(top);
  look();
  session().removal().setCriticalWarning(top);
  look();
  session().removal().setCriticalWarning(std::nullopt);
  session().startWatch();
  look();
  EXPECT_THAT(seen_, Contains("Watching System Disk"));
  machine_.folderPanel.answer = "/home/ada";
  session().compareWithFolder();
  look();
  session().exportJSON();
  look();
  EXPECT_THAT(seen_, Contains("marrow-System Disk.json"));
  session().trash(top);
  look();
  EXPECT_THAT(wrong_, IsEmpty());
}

TEST_F(WordsOfTheWholeDisk, texts_suit_the_system_in_the_warning_of_a_full_disk) {
  EXPECT_THAT(seen_, Contains("This computer is 99% full. Open Tessaly to reclaim space."));
  EXPECT_THAT(wrong_, IsEmpty());
}

}  // namespace
}  // namespace tessaly

#include "ScreenWords_test.moc"

#endif
