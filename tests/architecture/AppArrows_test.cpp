#include "architecture/AppArrows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "architecture/PlantedSources_test.h"

namespace tessaly::architecture {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using PlantedApp = PlantedSources;

TEST_F(PlantedApp, using_a_folder_along_an_arrow_is_allowed) {
  plant("Application.cpp", "#include \"app/window/A.h\"\nQ_IMPORT_QML_PLUGIN(Tessaly_MapPlugin)\n");
  plant("window/A.cpp", "#include \"app/window/A.h\"\n#include \"app/model/B.h\"\n");
  plant("window/A.qml", "import Tessaly.Window\nimport Tessaly.Sidebar\nimport QtQuick\n");
  plant("preview/pages/A.cpp", "#include \"app/preview/A.h\"\n");
  plant("map/CMakeLists.txt", "LINKS tessaly_map tessaly_controlsplugin tessaly_session\n");
  EXPECT_THAT(forbiddenInApp(src_), IsEmpty());
}

TEST_F(PlantedApp, an_include_without_an_arrow_is_found) {
  plant("controls/A.h", "\n#include \"app/model/DisplayText.h\"\n");
  plant("preview/A.cpp", "#include \"app/preview/pages/A.h\"\n");
  plant("quicklook/A.cpp", "#include \"app/map/KindWord.h\"\n");
  plant("window/A_test.cpp", "#include \"app/Application.h\"\n");
  EXPECT_THAT(forbiddenInApp(src_),
              ElementsAre("controls/A.h:2: controls uses model: there is no such arrow",
                          "preview/A.cpp:1: preview uses preview/pages: there is no such arrow",
                          "quicklook/A.cpp:1: quicklook uses map: there is no such arrow",
                          "window/A_test.cpp:1: window uses main: there is no such arrow"));
}

TEST_F(PlantedApp, a_qml_module_without_an_arrow_is_found) {
  plant("map/A.qml", "import Tessaly.QuickLook\n");
  plant("map/B.qml", "import \"../queue\"\nimport \"../model\"\n");
  plant("queue/A_test.cpp", "Q_IMPORT_QML_PLUGIN(Tessaly_PanesPlugin)\n");
  EXPECT_THAT(forbiddenInApp(src_),
              ElementsAre("map/A.qml:1: map uses quicklook: there is no such arrow",
                          "map/B.qml:1: map uses queue: there is no such arrow",
                          "queue/A_test.cpp:1: queue uses panes: there is no such arrow"));
}

TEST_F(PlantedApp, a_link_without_an_arrow_is_found) {
  plant("desktop/CMakeLists.txt", "LINKS tessaly_decoders tessaly_app\n");
  plant("model/CMakeLists.txt", "LINKS tessaly_session tessaly_windowplugin\n");
  EXPECT_THAT(
      forbiddenInApp(src_),
      ElementsAre("desktop/CMakeLists.txt:1: desktop uses preview/pages: there is no such arrow",
                  "desktop/CMakeLists.txt:1: desktop uses main: there is no such arrow",
                  "model/CMakeLists.txt:1: model uses window: there is no such arrow"));
}

TEST_F(PlantedApp, a_folder_without_a_row_in_the_table_is_found) {
  plant("utils/A.h", "\n");
  EXPECT_THAT(forbiddenInApp(src_), ElementsAre("utils/A.h:1: not in a folder that is known"));
}

TEST_F(PlantedApp, the_table_of_arrows_is_read_below_its_heading) {
  plant("A.md",
        "## Rooms\n| `scan` | the tree | `look` |\n## `app`\n"
        "| `map` | the `tiles` | `model`, `controls` |\n| `model` | names | |\n## End\n"
        "| `x` | y | `z` |\n");
  EXPECT_EQ(drawnArrows(src_ / "A.md"), (Arrows{{"map", {"controls", "model"}}, {"model", {}}}));
}

TEST(Cycles, cycles_of_any_length_are_found) {
  EXPECT_THAT(foldersOnCycles({{"a", {"b"}}, {"b", {"c"}}, {"c", {"b"}}, {"d", {"d"}}}),
              ElementsAre("b", "c", "d"));
  EXPECT_THAT(foldersOnCycles({{"a", {"b", "c"}}, {"b", {"c"}}, {"c", {}}}), IsEmpty());
}

const std::filesystem::path project = TESSALY_PROJECT_FOLDER;

TEST(App, the_arrows_of_the_app_have_no_cycle) {
  EXPECT_THAT(foldersOnCycles(appArrows()), IsEmpty());
}

TEST(App, the_folders_of_the_app_follow_the_arrows) {
  EXPECT_THAT(forbiddenInApp(project / "src/app"), IsEmpty());
}

TEST(App, the_arrows_of_the_app_are_those_of_the_document) {
  EXPECT_EQ(drawnArrows(project / "ARCHITECTURE.md"), appArrows());
}

}  // namespace
}  // namespace tessaly::architecture
