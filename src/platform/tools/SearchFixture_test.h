// A search below a tree that may be in a folder of the system, such as /tmp. Every folder can be
// searched, and the files are those of the user who runs the test, unless a test sets it otherwise.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/tools/LiveSearch.h"
#include "platform/tools/WholeLines.h"
#include "support/TempTree.h"

namespace tessaly::tools {

class SearchFixture : public testing::Test {
 protected:
  static Places everywhere() {
    Places places = Places::forLinux();
    places.critical.prefixes.clear();
    return places;
  }

  TempTree tree_;
  LiveSearch::Settings settings_ = {.places = everywhere(),
                                    .home = tree_.at("home"),
                                    .owner = geteuid(),
                                    .deadline = Deadline::never(),
                                    .bytes = WholeLines::limit};
};

}  // namespace tessaly::tools
