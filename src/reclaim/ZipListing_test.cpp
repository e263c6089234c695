// Lists of archives made by the system's zip, and of damaged ones.
#include "reclaim/ZipListing.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

#include "support/PlainFiles.h"
#include "support/TempTree.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class Listing : public testing::Test {
 protected:
  void zip(const std::vector<std::string>& args) const {
    ASSERT_TRUE(Shell::runToEnd("/usr/bin/zip", args, 600, tree_.at("in")).exit.isSuccess());
  }

  static std::optional<ZipListing> listingOf(const std::string& bytes) {
    const auto read = [&](std::int64_t offset, char* to, std::size_t count) {
      const auto at = static_cast<std::size_t>(offset);
      if (offset < 0 || at > bytes.size() || count > bytes.size() - at) return false;
      std::memcpy(to, bytes.data() + at, count);
      return true;
    };
    return ZipListing::of(static_cast<std::int64_t>(bytes.size()), read);
  }

  TempTree tree_{
      "in/\n"
      "  Code/\n"
      "    bare/\n"
      "    main.cpp 4K\n"
      "    empty\n"
      "  caf\\xE9\\n 8K\n"};
  std::string archive_ = tree_.at("out.zip");
};

TEST_F(Listing, all_entries_that_zip_has_written_are_listed) {
  zip({"-r", "-q", archive_, "."});
  const auto listing = ZipListing::at(archive_);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->count(), 5U);
  EXPECT_EQ(listing->sizeOf("Code/"), 0);
  EXPECT_EQ(listing->sizeOf("Code/bare/"), 0);
  EXPECT_EQ(listing->sizeOf("Code/main.cpp"), 4096);
  EXPECT_EQ(listing->sizeOf("Code/empty"), 0);
  EXPECT_EQ(listing->sizeOf("caf\xE9\n"), 8192);
  EXPECT_EQ(listing->sizeOf("Code"), std::nullopt);
  EXPECT_EQ(listing->sizeOf("main.cpp"), std::nullopt);
}

TEST_F(Listing, the_list_is_found_before_a_comment) {
  zip({"-r", "-q", archive_, "Code"});
  std::string bytes = contentOf(archive_);
  bytes[bytes.size() - 2] = 6;
  bytes += "PK\5\6no";
  ASSERT_TRUE(listingOf(bytes));
  EXPECT_EQ(listingOf(bytes)->count(), 4U);
}

TEST_F(Listing, the_list_is_found_in_a_zip64_archive) {
  zip({"-r", "-q", "-fz", archive_, "Code"});
  const auto listing = ZipListing::at(archive_);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->sizeOf("Code/main.cpp"), 4096);
}

TEST_F(Listing, more_than_65535_entries_are_listed) {
  tree_.plant("in", "many/\n  f##### x66000\n");
  zip({"-r", "-q", "-0", archive_, "many"});
  const auto listing = ZipListing::at(archive_);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->count(), 66001U);
  EXPECT_EQ(listing->sizeOf("many/f65999"), 0);
}

TEST_F(Listing, a_file_beyond_four_gibibytes_has_its_size) {
  std::string bytes;
  // As zip would write it; built by hand, since packing such a large file takes long.
  const auto put = [&](std::uint64_t value, int length) {
    for (int k = 0; k < length; ++k) bytes += static_cast<char>(value >> 8 * k & 0xffU);
  };
  bytes = "PK\1\2";
  bytes.append(20, '\0');
  put(0xffffffff, 4);
  put(4, 2);
  put(5 + 12, 2);
  bytes.append(14, '\0');
  bytes += "huge";
  put(7, 2), put(1, 2), put(0, 1);
  put(1, 2), put(8, 2), put(4294967297, 8);
  const std::size_t length = bytes.size();
  bytes += "PK\5\6";
  put(0, 4), put(1, 2), put(1, 2), put(length, 4), put(0, 4), put(0, 2);
  const auto listing = listingOf(bytes);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->sizeOf("huge"), 4294967297);
}

TEST_F(Listing, other_files_have_no_list) {
  EXPECT_FALSE(listingOf(""));
  EXPECT_FALSE(listingOf("PK"));
  EXPECT_FALSE(listingOf(std::string(100'000, 'P')));
  EXPECT_FALSE(ZipListing::at(tree_.at("in")));
  EXPECT_FALSE(ZipListing::at(tree_.at("nowhere")));
}

TEST_F(Listing, a_damaged_archive_has_no_list) {
  zip({"-r", "-q", archive_, "Code"});
  const std::string bytes = contentOf(archive_);
  ASSERT_TRUE(listingOf(bytes));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(listingOf(bytes.substr(0, length))) << length;
  }
  std::string fewer = bytes;
  fewer[bytes.size() - 12] = 2;
  EXPECT_FALSE(listingOf(fewer));
}

}  // namespace
}  // namespace tessaly
