#include "scan/DiskNodeJson.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;
using DiskNodeJson::decode;
using DiskNodeJson::encode;

const std::string leafText =
    R"({"name":"a","path":"/a","size":1,"isDir":false,"kind":"other","children":[]})";

// The JSON of a leaf with `from` replaced by `to`.
std::string leafWith(const std::string& from, const std::string& to) {
  std::string text = leafText;
  const std::size_t position = text.find(from);
  EXPECT_NE(position, std::string::npos) << from;
  return text.replace(position, from.size(), to);
}

DiskNode leaf(const std::string& name, std::int64_t size) {
  return DiskNode({name, "/t/" + name, size, false, FileKind::other, std::nullopt});
}

DiskNode timed(double mtime) {
  return DiskNode({"a", "/a", 1, false, FileKind::other, mtime});
}

std::string timeText(double mtime) {
  const std::string text = encode(timed(mtime));
  const std::size_t begin = text.find("\"mtime\":");
  if (begin == std::string::npos) return "";
  return text.substr(begin + 8, text.size() - begin - 9);
}

// A tree of `levels` nodes, each the only child of the previous one.
std::string chainText(int levels) {
  std::string text;
  for (int level = 0; level < levels; ++level) {
    text += R"({"name":"a","path":"/a","size":0,"isDir":true,"kind":"folder","children":[)";
  }
  for (int level = 0; level < levels; ++level) text += "]}";
  return text;
}

TEST(DiskNodeJsonEncode, keys_are_written_in_order_without_blanks) {
  const DiskNode tree({"h", "/home/h", 30, true, FileKind::folder, 1700000000.5},
                      {DiskNode({"x.mp4", "/home/h/x.mp4", 20, false, FileKind::video, 12.0}),
                       DiskNode({"+ 3 more", "/home/h/__rest__", 10, false, FileKind::other, {}})});
  EXPECT_EQ(
      encode(tree),
      R"({"name":"h","path":"/home/h","size":30,"isDir":true,"kind":"folder","children":[)"
      R"({"name":"x.mp4","path":"/home/h/x.mp4","size":20,"isDir":false,"kind":"video","children":[],"mtime":12},)"
      R"({"name":"+ 3 more","path":"/home/h/__rest__","size":10,"isDir":false,"kind":"other","children":[]})"
      R"(],"mtime":1700000000.5})");
}

TEST(DiskNodeJsonEncode, a_default_node_is_written_without_a_time) {
  EXPECT_EQ(encode(DiskNode()),
            R"({"name":"","path":"","size":0,"isDir":false,"kind":"other","children":[]})");
}

TEST(DiskNodeJsonEncode, a_node_inside_a_tree_is_written_as_a_tree) {
  const DiskNode tree({"t", "/t", 3, true, FileKind::folder, {}},
                      {DiskNode({"u", "/t/u", 2, true, FileKind::folder, {}},
                                {DiskNode({"x", "/t/u/x", 2, false, FileKind::code, {}})}),
                       leaf("y", 1)});
  const DiskNode inside = tree.children().front();
  EXPECT_EQ(encode(inside),
            R"({"name":"u","path":"/t/u","size":2,"isDir":true,"kind":"folder","children":[)"
            R"({"name":"x","path":"/t/u/x","size":2,"isDir":false,"kind":"code","children":[]}]})");
  EXPECT_EQ(decode(encode(inside)), inside);
}

TEST(DiskNodeJsonEncode, a_path_outside_that_of_the_parent_is_written_whole) {
  const DiskNode tree({"/", "/", 3, true, FileKind::folder, {}},
                      {DiskNode({"u", "/u", 2, true, FileKind::folder, {}},
                                {DiskNode({"far", "/far/away", 1, true, FileKind::folder, {}},
                                          {DiskNode({"z", "/far/away/z", 1, false, {}, {}})}),
                                 DiskNode({"x", "/u/x", 1, false, FileKind::code, {}})}),
                       DiskNode({"v", "/v", 1, false, FileKind::code, {}})});
  const std::string text = encode(tree);
  for (const char* path : {"/", "/u", "/far/away", "/far/away/z", "/u/x", "/v"}) {
    EXPECT_NE(text.find("\"path\":\"" + std::string(path) + "\","), std::string::npos) << path;
  }
  EXPECT_EQ(decode(text), tree);
}

TEST(DiskNodeJsonEncode, times_are_written_with_as_few_digits_as_can_be_read_back) {
  EXPECT_EQ(timeText(1700000000), "1700000000");
  EXPECT_EQ(timeText(0), "0");
  EXPECT_EQ(timeText(-3), "-3");
  EXPECT_EQ(timeText(0.1), "0.1");
  EXPECT_EQ(timeText(1723891234.123456), "1723891234.123456");
  for (const double mtime : {1e300, 5e-324, 9007199254740993.0, -1e19, 1e19, 1.0 / 3}) {
    EXPECT_EQ(decode(encode(timed(mtime))), timed(mtime));
  }
}

TEST(DiskNodeJsonEncode, a_time_that_is_not_finite_is_left_out) {
  EXPECT_EQ(timeText(std::numeric_limits<double>::quiet_NaN()), "");
  EXPECT_EQ(timeText(std::numeric_limits<double>::infinity()), "");
}

TEST(DiskNodeJsonEncode, the_largest_size_is_written_and_read_back) {
  const DiskNode node = leaf("a", std::numeric_limits<std::int64_t>::max());
  EXPECT_NE(encode(node).find("\"size\":9223372036854775807,"), std::string::npos);
  EXPECT_EQ(decode(encode(node)), node);
}

TEST(DiskNodeJsonEncode, bytes_that_are_not_utf8_are_escaped) {
  const DiskNode node({"\xff\n\"", "/\xff\n\"", 1, false, FileKind::other, {}});
  EXPECT_TRUE(encode(node).starts_with(
      "{\"name\":\"\U0010FFFF\\n\\\"\",\"path\":\"/\U0010FFFF\\n\\\"\",\"size\":1,"))
      << encode(node);
  EXPECT_EQ(decode(encode(node)), node);
}

TEST(DiskNodeJsonDecode, a_leaf_is_read) {
  EXPECT_EQ(decode(leafText), DiskNode({"a", "/a", 1, false, FileKind::other, {}}));
}

TEST(DiskNodeJsonDecode, keys_may_be_in_any_order_with_blanks_between_them) {
  EXPECT_EQ(decode(R"( { "children" : [ ] , "mtime" : 2.5 , "kind" : "code" , "isDir" : true ,
                        "size" : 7 , "path" : "\/x\/a" , "name" : "\u0061" } )"),
            DiskNode({"a", "/x/a", 7, true, FileKind::code, 2.5}));
}

TEST(DiskNodeJsonDecode, unknown_keys_are_ignored) {
  EXPECT_EQ(decode(leafWith("\"size\"", R"("more":{"size":[1,null,{}]},"size")")),
            decode(leafText));
}

TEST(DiskNodeJsonDecode, a_time_may_be_whole_fractional_or_absent) {
  const auto withTime = [](const std::string& time) {
    return decode(leafWith("[]", "[],\"mtime\":" + time));
  };
  const auto leafAt = [](std::optional<double> mtime) {
    return DiskNode({"a", "/a", 1, false, FileKind::other, mtime});
  };
  EXPECT_EQ(withTime("5"), leafAt(5));
  EXPECT_EQ(withTime("5.25"), leafAt(5.25));
  EXPECT_EQ(withTime("18446744073709551615"), leafAt(18446744073709551615.0));
  EXPECT_EQ(withTime("null"), leafAt(std::nullopt));
  for (const char* wrong : {"\"5\"", "true", "[]", "{}", "NaN", "Infinity", "1e999", "nul", "-"}) {
    EXPECT_EQ(withTime(wrong), std::nullopt) << wrong;
  }
}

TEST(DiskNodeJsonDecode, json_with_a_missing_key_is_refused) {
  for (const char* key : {"name", "path", "size", "isDir", "kind", "children"}) {
    const std::string quoted = '"' + std::string(key) + '"';
    EXPECT_EQ(decode(leafWith(quoted, "\"other\"")), std::nullopt) << key;
  }
}

TEST(DiskNodeJsonDecode, values_of_another_type_are_refused) {
  for (const char* value : {"null", "1", "true", "[]", "{}"}) {
    EXPECT_EQ(decode(leafWith("\"a\"", value)), std::nullopt) << value;
    EXPECT_EQ(decode(leafWith("\"/a\"", value)), std::nullopt) << value;
    EXPECT_EQ(decode(leafWith("\"other\"", value)), std::nullopt) << value;
  }
  for (const char* value : {"null", "\"1\"", "true", "[]", "1.0", "1e0", "1.5", "-0.0"}) {
    EXPECT_EQ(decode(leafWith(":1,", ":" + std::string(value) + ",")), std::nullopt) << value;
  }
  for (const char* value : {"null", "0", "1", "\"false\"", "[]"}) {
    EXPECT_EQ(decode(leafWith("false", value)), std::nullopt) << value;
  }
  for (const char* value : {"null", "{}", "0", "\"\"", "[null]", "[1]", "[[]]", "[{}]"}) {
    EXPECT_EQ(decode(leafWith("[]", value)), std::nullopt) << value;
  }
}

TEST(DiskNodeJsonDecode, an_unknown_kind_is_refused) {
  EXPECT_EQ(decode(leafWith("\"other\"", "\"music\"")), std::nullopt);
  EXPECT_EQ(decode(leafWith("\"other\"", "\"\"")), std::nullopt);
}

TEST(DiskNodeJsonDecode, sizes_below_zero_or_beyond_64_bits_are_refused) {
  EXPECT_EQ(decode(leafWith(":1,", ":-1,")), std::nullopt);
  EXPECT_EQ(decode(leafWith(":1,", ":9223372036854775808,")), std::nullopt);
  EXPECT_EQ(decode(leafWith(":1,", ":99999999999999999999999,")), std::nullopt);
}

TEST(DiskNodeJsonDecode, sizes_whose_sum_overflows_are_refused) {
  constexpr std::int64_t half = std::numeric_limits<std::int64_t>::max() / 2;
  const auto tree = [](std::int64_t extra) {
    return DiskNode({"t", "/t", half, true, FileKind::folder, {}},
                    {leaf("a", half), leaf("b", extra)});
  };
  EXPECT_EQ(decode(encode(tree(1))), tree(1));
  EXPECT_EQ(decode(encode(tree(2))), std::nullopt);
}

TEST(DiskNodeJsonDecode, a_tree_beyond_the_maximum_depth_is_refused) {
  EXPECT_TRUE(decode(chainText(DiskNodeJson::maximumDepth + 1)));
  EXPECT_EQ(decode(chainText(DiskNodeJson::maximumDepth + 2)), std::nullopt);
  EXPECT_EQ(decode(chainText(100000)), std::nullopt);
  EXPECT_EQ(decode(std::string(100000, '[')), std::nullopt);
  EXPECT_EQ(decode(leafWith("\"a\"", std::string(100000, '[') + std::string(100000, ']'))),
            std::nullopt);
}

TEST(DiskNodeJsonDecode, json_that_is_no_tree_is_refused) {
  for (const char* text : {"", " ", "null", "1", "\"a\"", "[]", "{}", "[{}]", "{", "}", "\0", "NaN",
                           "{\"name\":\"\xff\"}", "\xef\xbb\xbf"}) {
    EXPECT_EQ(decode(text), std::nullopt) << text;
  }
  EXPECT_EQ(decode(leafText + "x"), std::nullopt);
  EXPECT_EQ(decode(leafText + leafText), std::nullopt);
}

TEST(DiskNodeJsonDecode, paths_are_compared_by_their_bytes_and_not_by_their_escapes) {
  // The name of the folder, first as text and then byte by byte.
  const std::string bytes = "/\U0010FFC3\U0010FFA9";
  const auto folderWith = [](const std::string& path, const std::string& childPath) {
    return decode(R"({"name":"é","path":")" + path +
                  R"(","size":1,"isDir":true,"kind":"folder","children":[)"
                  R"({"name":"a","path":")" +
                  childPath + R"(","size":1,"isDir":false,"kind":"other","children":[]}]})");
  };
  const DiskNode expected({"é", "/é", 1, true, FileKind::folder, {}},
                          {DiskNode({"a", "/é/a", 1, false, FileKind::other, {}})});
  EXPECT_EQ(folderWith("/é", "/é/a"), expected);
  EXPECT_EQ(folderWith(bytes, bytes + "/a"), expected);
  EXPECT_EQ(folderWith("/é", bytes + "/a"), expected);
  EXPECT_EQ(folderWith(bytes, "/é/a"), expected);
  EXPECT_EQ(folderWith("/é", "/éa")->children().front().path(), "/éa");
  EXPECT_EQ(folderWith("/é", "/é")->children().front().path(), "/é");
  EXPECT_EQ(folderWith("/é", "/é/")->children().front().path(), "/é/");
  EXPECT_EQ(folderWith("/é", "/é/b/a")->children().front().path(), "/é/b/a");
  EXPECT_EQ(folderWith("/", "/a")->children().front().path(), "/a");
  EXPECT_EQ(folderWith("", "/a")->children().front().path(), "/a");
  EXPECT_EQ(folderWith("", "a")->children().front().path(), "a");
}

TEST(DiskNodeJsonDecode, nul_bytes_are_refused) {
  for (const std::string& value : {R"("\u0000")"s, R"("x\u0000/y")"s, "\"\0\""s}) {
    EXPECT_EQ(decode(leafWith("\"a\"", value)), std::nullopt) << value;
    EXPECT_EQ(decode(leafWith("\"/a\"", value)), std::nullopt) << value;
  }
  EXPECT_EQ(decode(leafText + "\0"s), std::nullopt);
}

TEST(DiskNodeJsonDecode, the_last_of_several_values_for_one_key_is_used) {
  EXPECT_EQ(decode(leafWith("\"isDir\"", R"("size":5,"isDir")")),
            DiskNode({"a", "/a", 5, false, FileKind::other, {}}));
}

TEST(DiskNodeJsonDecode, a_byte_order_mark_is_refused) {
  EXPECT_EQ(decode("\xef\xbb\xbf" + leafText), std::nullopt);
}

TEST(DiskNodeJsonDecode, text_that_is_not_utf8_is_refused) {
  EXPECT_EQ(decode(leafWith("\"a\"", "\"\xff\"")), std::nullopt);
  EXPECT_EQ(decode(leafWith("\"a\"", "\"\xed\xa0\x80\"")), std::nullopt);
}

// A random tree of any shape that a scan may return, and some that it may not.
DiskNode randomTree(std::mt19937_64& random, const std::string& path, int depth) {
  const auto randomName = [&random] {
    std::string name;
    for (auto length = 1 + random() % 6; length > 0; --length) {
      switch (random() % 5) {
        case 0:
          name += static_cast<char>(1 + random() % 255);
          break;
        case 1:
          name += random() % 2 == 0 ? "é" : "\U0010FFFF";
          break;
        default:
          name += static_cast<char>('a' + random() % 26);
      }
    }
    return name;
  };
  std::vector<DiskNode> children;
  if (depth < 5) {
    for (auto count = random() % 5; count > 0; --count) {
      const std::string below = path + (path == "/" ? "" : "/") + randomName();
      children.push_back(
          randomTree(random, random() % 10 == 0 ? "/" + randomName() : below, depth + 1));
    }
    if (random() % 3 == 0) {
      children.emplace_back(
          DiskNode::Fields{"+ 9 more", path + "/__rest__", 12, false, FileKind::other, {}});
    }
  }
  DiskNode::Fields fields;
  fields.name = random() % 4 == 0 ? randomName() : path.substr(path.rfind('/') + 1);
  fields.path = path;
  fields.size = static_cast<std::int64_t>(random() >> (16 + random() % 40));
  fields.isDir = !children.empty() || random() % 2 == 0;
  fields.kind = allFileKinds[random() % allFileKinds.size()];
  if (random() % 3 != 0) fields.mtime = static_cast<double>(random() >> 20U) / 1024.0;
  return DiskNode(fields, children);
}

TEST(DiskNodeJson, random_trees_are_equal_after_a_round_trip) {
  std::mt19937_64 random(7);
  std::size_t nodes = 0;
  for (int round = 0; round < 300; ++round) {
    const DiskNode tree = randomTree(random, round % 2 == 0 ? "/" : "/home/\xe9t\xe9", 0);
    const std::string text = encode(tree);
    const std::optional<DiskNode> back = decode(text);
    ASSERT_TRUE(back) << text;
    ASSERT_EQ(*back, tree) << text;
    ASSERT_EQ(encode(*back), text);
    nodes += tree.subtreeCount();
  }
  EXPECT_GT(nodes, 5000U);
}

TEST(DiskNodeJson, a_text_cut_at_any_byte_is_refused) {
  std::mt19937_64 random(3);
  const std::string text = encode(randomTree(random, "/r", 2));
  ASSERT_GT(text.size(), 500U);
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(decode(std::string_view(text).substr(0, length)), std::nullopt) << length;
  }
  EXPECT_TRUE(decode(text));
}

TEST(DiskNodeJson, a_text_with_one_byte_changed_is_refused_or_read_as_another_tree) {
  std::mt19937_64 random(5);
  const DiskNode tree = randomTree(random, "/r", 3);
  const std::string text = encode(tree);
  int refused = 0;
  for (std::size_t position = 0; position < text.size(); ++position) {
    std::string changed = text;
    changed[position] = static_cast<char>(changed[position] ^ (1U << (random() % 8)));
    const std::optional<DiskNode> back = decode(changed);
    if (back) {
      // A tree that was read can be written and read again.
      EXPECT_EQ(decode(encode(*back)), back);
    } else {
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace tessaly
