#include "platform/tools/SearchQuery.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly::tools {
namespace {

using Args = std::vector<std::string>;

TEST(SearchQuery, a_least_size_is_read) {
  const ReadQuery read = queryFrom({"-onlyin", "/home/x y", "kMDItemFSSize >= 52428800"});
  EXPECT_EQ(read.query, (SearchQuery{"/home/x y", SearchQuery::BySize{52428800}}));
  EXPECT_EQ(read.problem, "");
  EXPECT_EQ(leastSizeIn("kMDItemFSSize >= 0"), 0);
  EXPECT_EQ(leastSizeIn("  kMDItemFSSize>=7 "), 7);
  EXPECT_EQ(leastSizeIn("kMDItemFSSize >= 9223372036854775807"),
            std::numeric_limits<std::int64_t>::max());
}

TEST(SearchQuery, other_queries_are_not_understood) {
  for (const char* const query :
       {"", "kMDItemFSSize", "kMDItemFSSize >=", "kMDItemFSSize > 5", "kMDItemFSSize >= 5k",
        "kMDItemFSSize >= 9223372036854775808", "kMDItemFSSize >= 5 && kMDItemFSSize >= 6",
        "kMDItemFSName == 'a'", "kMDItemContentType == 'com.apple.application-bundle'",
        "5 <= kMDItemFSSize", "kmditemfssize >= 5", "kMDItemFSSize >= 0x5"}) {
    EXPECT_EQ(leastSizeIn(query), std::nullopt) << query;
    const ReadQuery read = queryFrom({"-onlyin", "/home", query});
    EXPECT_EQ(read.query, std::nullopt);
    EXPECT_FALSE(read.isMisuse);
    EXPECT_NE(read.problem, "");
  }
}

TEST(SearchQuery, a_name_is_read_as_it_is) {
  for (const char* const text : {"film", "-name", "a b", "\u00c9t\u00e9", "kMDItemFSSize >= 5"}) {
    EXPECT_EQ(queryFrom({"-onlyin", "/home", "-name", text}).query,
              (SearchQuery{"/home", SearchQuery::ByName{text}}));
  }
}

TEST(SearchQuery, a_name_that_nothing_can_contain_is_refused) {
  for (const char* const text : {"", "\u0301", "\xff", "a\xc3"}) {
    const ReadQuery read = queryFrom({"-onlyin", "/home", "-name", text});
    EXPECT_EQ(read.query, std::nullopt);
    EXPECT_FALSE(read.isMisuse);
    EXPECT_NE(read.problem, "");
  }
}

TEST(SearchQuery, other_arguments_are_a_misuse) {
  for (const Args& args : {Args{},
                           {"-onlyin"},
                           {"-onlyin", "/home"},
                           {"-onlyin", "", "kMDItemFSSize >= 5"},
                           {"kMDItemFSSize >= 5"},
                           {"-onlyin", "/home", "-name"},
                           {"-onlyin", "/home", "-name", "a", "b"},
                           {"-onlyin", "/home", "a", "b"},
                           {"-live", "/home", "kMDItemFSSize >= 5"},
                           {"-name", "a", "-onlyin", "/home"}}) {
    const ReadQuery read = queryFrom(args);
    EXPECT_EQ(read.query, std::nullopt);
    EXPECT_TRUE(read.isMisuse);
    EXPECT_EQ(read.problem,
              "usage: mdfind -onlyin FOLDER QUERY, or mdfind -onlyin FOLDER -name TEXT");
  }
}

TEST(SearchQuery, a_problem_is_one_line_of_limited_length) {
  for (const std::string& query : {std::string("a\nb\r\x1b[31m\xff"), std::string(100000, 'q')}) {
    const std::string problem = queryFrom({"-onlyin", "/home", query}).problem;
    EXPECT_EQ(problem.find_first_of("\n\r\x1b\xff"), std::string::npos);
    EXPECT_LT(problem.size(), 2000U);
  }
}

}  // namespace
}  // namespace tessaly::tools
