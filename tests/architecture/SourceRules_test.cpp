#include "architecture/SourceRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "architecture/PlantedSources_test.h"

namespace tessaly::architecture {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PlantedSources, an_include_along_an_arrow_is_allowed) {
  plant("scan/A.cpp", "#include \"scan/A.h\"\n#include \"platform/Places.h\"\n#include <queue>\n");
  plant("app/B.cpp", "#include <QQuickItem>\n#include \"session/ScanSession.h\"\n");
  EXPECT_THAT(forbiddenIncludes(src_), IsEmpty());
}

TEST_F(PlantedSources, an_include_against_the_arrows_is_found) {
  plant("scan/A.cpp", "\n#include \"treemap/TreemapLayout.h\"\n");
  plant("reclaim/B.h", "#  include \"assistants/Brief.h\"\n");
  EXPECT_THAT(forbiddenIncludes(src_),
              ElementsAre("reclaim/B.h:1: reclaim includes assistants: the arrow runs back",
                          "scan/A.cpp:2: scan includes treemap: the arrow runs back"));
}

TEST_F(PlantedSources, an_include_of_a_room_in_angle_brackets_is_found) {
  plant("scan/A.cpp", "#include <treemap/Rect.h>\n#include <sys/stat.h>\n");
  plant("app/B.h", "#include <app/desktop/LinuxWorkspace.h>\n");
  EXPECT_THAT(forbiddenIncludes(src_),
              ElementsAre("app/B.h:1: <app/desktop/LinuxWorkspace.h>: a file of a room is included "
                          "as \"app/desktop/LinuxWorkspace.h\"",
                          "scan/A.cpp:1: <treemap/Rect.h>: a file of a room is included as "
                          "\"treemap/Rect.h\""));
}

TEST_F(PlantedSources, qt_in_a_room_without_qt_is_found) {
  plant("platform/linux/A.cpp", "#include <QString>\n");
  plant("treemap/B.h", "#include <QtCore/QObject>\n");
  plant("scan/C.cpp", "#include <qstring.h>\n");
  EXPECT_THAT(forbiddenIncludes(src_),
              ElementsAre("platform/linux/A.cpp:1: <QString>: platform is built without Qt",
                          "scan/C.cpp:1: <qstring.h>: scan is built without Qt",
                          "treemap/B.h:1: <QtCore/QObject>: treemap is built without Qt"));
}

TEST_F(PlantedSources, the_session_may_include_only_qt_core) {
  plant("session/A.h", "#include <QObject>\n#include <QtCore/QMimeData>\n");
  plant("session/B.h", "#include <QColor>\n#include <QtGui/QImage>\n");
  plant("session/B_test.cpp", "#include <QtTest/QSignalSpy>\n#include \"support/TempTree.h\"\n");
  EXPECT_THAT(
      forbiddenIncludes(src_),
      ElementsAre(
          "session/B.h:1: <QColor> is not known to be a header of QtCore, which is all session has",
          "session/B.h:2: <QtGui/QImage> is not known to be a header of QtCore, which is all "
          "session has"));
}

TEST_F(PlantedSources, only_its_own_files_and_tests_may_include_an_implementation_for_one_system) {
  plant("app/desktop/LinuxDesktopServices.cpp", "#include \"app/desktop/X11HotKey.h\"\n");
  plant("app/desktop/WindowActivation_test.cpp", "#include \"app/desktop/X11Fixture_test.h\"\n");
  plant("platform/linux/A.cpp", "#include \"platform/linux/Trash.h\"\n");
  plant("platform/tools/A_test.cpp", "#include \"platform/linux/Trash.h\"\n");
  EXPECT_THAT(forbiddenIncludes(src_), IsEmpty());

  const std::string rule = " is for one system: only its own files and tests name it";
  plant("app/Application.h", "#include \"app/desktop/LinuxWorkspace.h\"\n");
  plant("app/desktop/StatusIcon.cpp", "#include \"app/desktop/X11HotKey.h\"\n");
  plant("app/main.cpp", "#include \"platform/linux/Trash.h\"\n");
  plant("platform/Trash.cpp", "#include \"platform/linux/Trash.h\"\n");
  plant("scan/A_test.cpp", "#include \"platform/macos/Trash.h\"\n");
  EXPECT_THAT(forbiddenIncludes(src_),
              ElementsAre("app/Application.h:1: \"app/desktop/LinuxWorkspace.h\"" + rule,
                          "app/desktop/StatusIcon.cpp:1: \"app/desktop/X11HotKey.h\"" + rule,
                          "app/main.cpp:1: \"platform/linux/Trash.h\"" + rule,
                          "platform/Trash.cpp:1: \"platform/linux/Trash.h\"" + rule,
                          "scan/A_test.cpp:1: \"platform/macos/Trash.h\"" + rule));
}

TEST_F(PlantedSources, a_library_of_one_desktop_outside_its_folder_is_found) {
  plant("app/desktop/SessionBus.h", "#include <QDBusMessage>\n#include <xcb/xcb.h>\n");
  plant("app/window/A.cpp", "#include <QDBusMessage>\n#include <xcb/xcb.h>\n");
  EXPECT_THAT(
      forbiddenIncludes(src_),
      ElementsAre("app/window/A.cpp:1: <QDBusMessage> is for one system: only app/desktop names it",
                  "app/window/A.cpp:2: <xcb/xcb.h> is for one system: only app/desktop names it"));
}

TEST_F(PlantedSources, an_include_without_a_room_is_found) {
  plant("scan/A.cpp", "#include \"DiskNode.h\"\n#include \"support/TempTree.h\"\n");
  plant("utils/B.cpp", "#include <string>\n");
  EXPECT_THAT(forbiddenIncludes(src_),
              ElementsAre("scan/A.cpp:1: \"DiskNode.h\" is not named by its room",
                          "scan/A.cpp:2: \"support/TempTree.h\" is not named by its room",
                          "utils/B.cpp:1: not in a room that is known"));
}

TEST_F(PlantedSources, a_thread_outside_platform_is_found) {
  plant("platform/A.cpp", "std::thread worker;\n");
  plant("scan/A.cpp", "auto n = std::thread::hardware_concurrency();  // std::thread\n");
  plant("scan/B.cpp", "std::jthread worker;\n");
  plant("app/C.cpp", "QMetaObject::invokeMethod(this, f);\n");
  EXPECT_THAT(forbiddenThreads(src_),
              ElementsAre("app/C.cpp:1: hops between threads go through platform/Dispatch.h",
                          "scan/B.cpp:1: hops between threads go through platform/Dispatch.h"));
}

TEST_F(PlantedSources, a_thread_start_that_does_not_handle_refusal_is_found) {
  plant("platform/StartThread.cpp", "return std::thread(body);\n");
  plant("platform/A.cpp", "std::thread worker;\nstd::vector<std::thread> all;\n");
  plant("platform/A_test.cpp", "std::thread worker([] {});\n");
  plant("platform/linux/B.cpp", "std::thread([this] { serve(); }).detach();\n");
  plant("platform/linux/C.cpp", "std::jthread worker{serve};\npthread_create(&one, 0, f, 0);\n");
  EXPECT_THAT(
      unguardedThreads(src_),
      ElementsAre("platform/linux/B.cpp:1: the system may refuse a thread: startThread() tells",
                  "platform/linux/C.cpp:1: the system may refuse a thread: startThread() tells",
                  "platform/linux/C.cpp:2: the system may refuse a thread: startThread() tells"));
}

TEST_F(PlantedSources, a_decoder_outside_its_program_is_found) {
  plant("app/preview/pages/A.cpp", "#include <QImageReader>\n");
  plant("app/preview/A.cpp", "#include <QImage>\n#include <QImageReader>\n");
  plant("app/quicklook/B.cpp",
        "#include <QtPdf/QPdfDocument>\n#include <libavformat/avformat.h>\n");
  EXPECT_THAT(
      strayDecoders(src_),
      ElementsAre("app/preview/A.cpp:2: foreign files are decoded in app/preview/pages/ alone",
                  "app/quicklook/B.cpp:1: foreign files are decoded in app/preview/pages/ alone",
                  "app/quicklook/B.cpp:2: foreign files are decoded in app/preview/pages/ alone"));
}

TEST_F(PlantedSources, a_text_for_one_system_is_found_in_sources_and_views) {
  plant("app/window/A.qml", "\nText { text: \"Reveal in Finder\" }\n");
  plant("session/B.cpp", "say(\"a\\\"\", \"This Mac\");  // \"Finder\"\n// \"iCloud\"\n");
  plant("session/B_test.cpp", "say(\"This Mac\");\n");
  plant("session/C.cpp", "say(\"http://machine/\", visionOf(mac));\n");
  plant("look/Wording.cpp", "say(\"This Mac\");\n");
  EXPECT_THAT(strayWordsOfMacos(src_),
              ElementsAre("app/window/A.qml:2: \"Finder\": texts of one system stand in Wording",
                          "session/B.cpp:1: \"Mac\": texts of one system stand in Wording"));
}

TEST_F(PlantedSources, a_colour_in_a_view_that_is_not_from_the_theme_is_found) {
  plant("app/window/A.qml",
        "color: Theme.ink\ncolor: Qt.alpha(Theme.ink, 0.1)\n"
        "tint: lit ? Theme.ink : \"transparent\"\n// color: \"white\"\n"
        "color: Theme.ink; text: \"white\"\n");
  plant("app/window/B.qml",
        "color: Qt.rgba(1, 1, 1, 0.1)\nfrom: \"#007AFF\"\nlabelColor: lit ? \"white\" : tint\n");
  plant("app/window/C.cpp", "color = \"#007AFF\";\n");
  EXPECT_THAT(strayColors(src_),
              ElementsAre("app/window/B.qml:1: views take their colours from Theme",
                          "app/window/B.qml:2: views take their colours from Theme",
                          "app/window/B.qml:3: views take their colours from Theme"));
}

TEST_F(PlantedSources, a_text_for_one_system_is_found_in_any_quotation_marks_of_a_view) {
  plant("app/window/A.qml", "Text { text: 'Reveal in Finder' }\nText { text: `${n} on Mac` }\n");
  plant("app/window/B.qml", "Text { text: \"the user's\" }  // a Mac's\n");
  plant("scan/C.cpp", "const char c = '\\''; const int n = 1'000; name(Mac, '\"');\n");
  EXPECT_THAT(strayWordsOfMacos(src_),
              ElementsAre("app/window/A.qml:1: \"Finder\": texts of one system stand in Wording",
                          "app/window/A.qml:2: \"Mac\": texts of one system stand in Wording"));
}

TEST_F(PlantedSources, the_rooms_are_read_below_their_heading) {
  plant("A.md",
        "# Rooms and arrows\n\n    b → a\n\n| Room | Contents | Qt |\n|---|---|---|\n"
        "| `a` | the `tiles` | none |\n| `b` | names | Qt Quick |\n## End\n\n    c → d\n\n"
        "| `c` | x | none |\n");
  EXPECT_EQ(drawnRooms(src_ / "A.md"), (Rooms{{"b", "a"}, {{"a", "none"}, {"b", "Qt Quick"}}}));
}

TEST_F(PlantedSources, a_file_with_more_lines_than_the_limit_is_found) {
  plant("scan/Short.cpp", "1\n2\n3\n");
  plant("scan/Long.cpp", "1\n2\n3\n4\n5\n");
  EXPECT_THAT(overlongFiles(src_, 3), ElementsAre("scan/Long.cpp:4: more than 3 lines"));
}

const fs::path project = TESSALY_PROJECT_FOLDER;

TEST(Sources, rooms_include_only_along_the_arrows) {
  EXPECT_THAT(forbiddenIncludes(project / "src"), IsEmpty());
}

TEST(Sources, the_architecture_document_draws_the_rooms_as_they_are) {
  EXPECT_EQ(drawnRooms(project / "ARCHITECTURE.md"), knownRooms());
}

TEST(Sources, sources_change_threads_only_through_dispatch) {
  EXPECT_THAT(forbiddenThreads(project / "src"), IsEmpty());
}

TEST(Sources, sources_start_threads_only_where_refusal_is_handled) {
  EXPECT_THAT(unguardedThreads(project / "src"), IsEmpty());
}

TEST(Sources, foreign_files_are_decoded_only_in_their_own_program) {
  EXPECT_THAT(strayDecoders(project / "src"), IsEmpty());
}

TEST(Sources, shared_sources_have_no_words_of_one_system) {
  EXPECT_THAT(strayWordsOfMacos(project / "src"), IsEmpty());
}

TEST(Sources, views_take_their_colours_from_the_theme) {
  EXPECT_THAT(strayColors(project / "src"), IsEmpty());
}

TEST(Sources, sources_have_at_most_600_lines) {
  for (const char* folder : {"src", "tests", "bench"}) {
    EXPECT_THAT(overlongFiles(project / folder, 600), IsEmpty());
  }
}

}  // namespace
}  // namespace tessaly::architecture
