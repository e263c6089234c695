#include "app/quicklook/PreviewSheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using Kind = PreviewScreen::Kind;

PreviewSheet sheetOf(const std::string& name, decltype(PreviewContent::body) body) {
  PreviewContent content;
  content.facts.path = "/" + name;
  content.facts.name = name;
  content.facts.size = 2048;
  content.facts.isDir = std::holds_alternative<FolderPreview>(body);
  content.body = std::move(body);
  return PreviewSheet::of(std::move(content), QTimeZone::utc());
}

std::vector<QImage> blankPages(int count) {
  return std::vector<QImage>(static_cast<std::size_t>(count), QImage(2, 3, QImage::Format_Mono));
}

TEST(PreviewSheet, only_the_name_is_known_before_the_file_is_read) {
  const PreviewSheet sheet = PreviewSheet::loading("/home/caf\xe9.txt");
  EXPECT_EQ(sheet.body, Kind::Loading);
  EXPECT_EQ(sheet.name, QString::fromUtf8("caf\xef\xbf\xbd.txt"));
  EXPECT_EQ(sheet.symbol, QString());
  EXPECT_EQ(sheet.size, QString());
  EXPECT_EQ(PreviewSheet::loading("/").name, "/");
}

TEST(PreviewSheet, kind_and_size_of_a_file_are_shown) {
  const PreviewSheet sheet = sheetOf("a.pdf", FactsOnly{});
  EXPECT_EQ(sheet.body, Kind::Facts);
  EXPECT_EQ(sheet.symbol, "doc.text");
  EXPECT_EQ(sheet.size, "2.0 KB");
  EXPECT_EQ(sheet.headline, "a.pdf");
  EXPECT_EQ(sheet.headlineSymbol, "doc.text");
  EXPECT_THAT(sheet.rows, SizeIs(3));
  EXPECT_EQ(sheet.notice, QString());
}

TEST(PreviewSheet, the_pixels_are_those_of_the_file_and_not_of_the_scaled_picture) {
  const PreviewSheet sheet =
      sheetOf("a.png", ImagePreview{QImage(2, 1, QImage::Format_Mono), {4000, 2000}});
  EXPECT_EQ(sheet.body, Kind::Image);
  EXPECT_THAT(sheet.pictures, SizeIs(1));
  EXPECT_EQ(sheet.notice, QString::fromUtf8("4000 × 2000 pixels"));
  EXPECT_EQ(sheet.description, QString::fromUtf8("Image, 4000 × 2000 pixels"));
}

TEST(PreviewSheet, the_notice_says_that_a_text_continues) {
  const PreviewSheet whole = sheetOf("a.txt", TextPreview{"a\nb", true});
  EXPECT_EQ(whole.body, Kind::Text);
  EXPECT_EQ(whole.lines.size(), 2U);
  EXPECT_EQ(whole.notice, QString());
  EXPECT_EQ(sheetOf("a.txt", TextPreview{"a", false}).notice,
            "Only the beginning of the file is shown");
}

TEST(PreviewSheet, the_notice_says_that_a_text_is_empty) {
  EXPECT_EQ(sheetOf("a.txt", TextPreview{"", true}).notice, "The file is empty");
}

TEST(PreviewSheet, the_notice_counts_the_pages_and_those_shown) {
  const PreviewSheet all = sheetOf("a.pdf", PagesPreview{blankPages(1), 1});
  EXPECT_EQ(all.body, Kind::Pages);
  EXPECT_THAT(all.pictures, SizeIs(1));
  EXPECT_EQ(all.notice, "1 page");
  EXPECT_EQ(sheetOf("a.pdf", PagesPreview{blankPages(2), 12}).notice,
            "12 pages, only the first 2 shown");
}

TEST(PreviewSheet, the_facts_of_a_sound_precede_those_of_its_file) {
  const PreviewSheet sheet = sheetOf("a.flac", MediaPreview{{{"Duration", "3:25"}}});
  EXPECT_EQ(sheet.body, Kind::Media);
  EXPECT_EQ(sheet.headlineSymbol, "music.note");
  ASSERT_THAT(sheet.rows, SizeIs(4));
  EXPECT_EQ(sheet.rows[0], (PreviewRow{{}, "Duration", "3:25"}));
  EXPECT_EQ(sheet.rows[1].name, "Kind");
}

TEST(PreviewSheet, a_film_has_its_own_symbol) {
  for (const char* name : {"a.mkv", "a.ogv", "A.MP4"})
    EXPECT_EQ(sheetOf(name, MediaPreview{}).headlineSymbol, "film") << name;
}

TEST(PreviewSheet, the_items_of_a_folder_are_listed) {
  const PreviewSheet sheet =
      sheetOf("src", FolderPreview{{{"sub", true, 0}, {"caf\xe9.zip", false, 1024}}, 2});
  EXPECT_EQ(sheet.body, Kind::Folder);
  EXPECT_EQ(sheet.symbol, "folder.fill");
  EXPECT_EQ(sheet.size, QString());
  ASSERT_THAT(sheet.rows, SizeIs(2));
  EXPECT_EQ(sheet.rows[0], (PreviewRow{"folder.fill", "sub", ""}));
  EXPECT_EQ(sheet.rows[1],
            (PreviewRow{"archivebox", QString::fromUtf8("caf\xef\xbf\xbd.zip"), "1.0 KB"}));
  EXPECT_EQ(sheet.notice, "2 items");
}

TEST(PreviewSheet, the_notice_says_how_many_items_of_a_large_folder_are_listed) {
  EXPECT_EQ(sheetOf("src", FolderPreview{{{"a", false, 1}}, 50000}).notice,
            "50000 items, only the first 1 shown");
  EXPECT_EQ(sheetOf("src", FolderPreview{}).notice, "0 items");
}

TEST(PreviewSheet, a_file_that_cannot_be_shown_has_a_reason_and_its_facts) {
  const PreviewSheet sheet = sheetOf("a.png", PreviewFailure{"The image is damaged."});
  EXPECT_EQ(sheet.body, Kind::Failure);
  EXPECT_EQ(sheet.headline, "The image is damaged.");
  EXPECT_EQ(sheet.headlineSymbol, "exclamationmark.triangle.fill");
  EXPECT_EQ(sheet.description, "The image is damaged.");
  EXPECT_THAT(sheet.rows, SizeIs(3));
  EXPECT_THAT(sheet.pictures, IsEmpty());
}

}  // namespace
}  // namespace tessaly
