#include "architecture/HeaderRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "architecture/PlantedSources_test.h"

namespace tessaly::architecture {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using PlantedHeaders = PlantedSources;

TEST_F(PlantedHeaders, a_header_that_its_source_includes_late_is_found) {
  plant("scan/First.h", "");
  plant("scan/First.cpp", "// Why.\n#include \"scan/First.h\"\n\n#include <string>\n");
  plant("scan/Late.h", "");
  plant("scan/Late.cpp", "#include <string>\n\n#include \"scan/Late.h\"\n");
  plant("scan/Never.h", "");
  plant("scan/Never.cpp", "int never;\n");
  plant("scan/WithoutSource.h", "");
  EXPECT_THAT(lateOwnHeaders(src_), ElementsAre("scan/Late.cpp: scan/Late.h comes first",
                                                "scan/Never.cpp: scan/Never.h comes first"));
}

TEST_F(PlantedHeaders, a_header_without_an_include_guard_is_found) {
  plant("scan/Once.h", "// What.\n#pragma once\n");
  plant("scan/Twice.h", "struct Twice {};\n");
  EXPECT_THAT(headersReadTwice(src_), ElementsAre("scan/Twice.h: no #pragma once"));
}

TEST(Headers, sources_include_their_own_header_first) {
  EXPECT_THAT(lateOwnHeaders(std::filesystem::path(TESSALY_PROJECT_FOLDER) / "src"), IsEmpty());
}

TEST(Headers, headers_have_an_include_guard) {
  EXPECT_THAT(headersReadTwice(std::filesystem::path(TESSALY_PROJECT_FOLDER) / "src"), IsEmpty());
}

}  // namespace
}  // namespace tessaly::architecture
