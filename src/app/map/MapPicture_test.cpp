#include "app/map/MapPicture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include <QRegion>

#include "app/map/Pixel.h"
#include "app/map/SampleTiles_test.h"
#include "app/map/TilePainter.h"

namespace tessaly {
namespace {

constexpr QSizeF size(600, 400);
// Rounded corners have no effect at this distance from the edges of a tile.
constexpr double insideCorners = 3;

DiskNode sample() {
  std::vector<DiskNode> inner = {
      folderNode("/r/a/sub", 120, {fileNode("/r/a/sub/0", 70), fileNode("/r/a/sub/1", 50)})};
  for (int i = 0; i < 6; ++i) inner.push_back(fileNode("/r/a/" + std::to_string(i), 60 - i * 5));
  std::vector<DiskNode> children = {folderNode("/r/a", 300, inner)};
  for (int i = 0; i < 5; ++i) {
    children.push_back(fileNode("/r/file" + std::to_string(i), 80 - i * 10, FileKind::video));
  }
  return folderNode("/r", 700, children);
}

class MapPictureTest : public ::testing::Test {
 protected:
  void select(const std::set<std::string>& paths) {
    selected_ = paths;
    tiles_ = CanvasTiles(sample(), size, {filters_, grown_, selected_, false});
  }

  std::size_t index(std::string_view path) const { return tiles_.find(path).value(); }

  // All tiles painted in order, with the one at `highlighted` in its highlighted form: what the
  // picture with the overlay must look like.
  QImage painted(std::optional<std::size_t> highlighted, double scale = 1) {
    PixelCanvas canvas(QRect(0, 0, static_cast<int>(size.width() * scale),
                             static_cast<int>(size.height() * scale)),
                       scale);
    TilePainter::paintGround(canvas, size);
    for (std::size_t i = 0; i < tiles_.all().size(); ++i) {
      if (const auto glow = TilePainter::glowOf(tiles_[i], i == highlighted, scale)) {
        glow->paint(canvas);
      }
      TilePainter::paintBody(canvas, tiles_[i], i == highlighted);
      labels_.paint(canvas, tiles_[i].rect);
    }
    TilePainter::paintOutline(canvas, size);
    TilePainter::cutCorners(canvas, size);
    return canvas.image();
  }

  // The picture of all tiles with the overlay for `highlighted`.
  QImage composed(std::size_t highlighted, double scale = 1) {
    PixelCanvas canvas = MapPicture::whole(tiles_, size, scale, labels_);
    for (const PixelCanvas& piece :
         MapPicture::highlight(tiles_, highlighted, size, scale, labels_)) {
      canvas.draw(piece.image(), piece.area().x(), piece.area().y());
    }
    return canvas.image();
  }

  // The largest difference between two pictures inside `rect` points, `inset` from its edges.
  static int differenceIn(const QImage& a, const QImage& b, const Rect& rect, double inset,
                          double scale = 1) {
    int largest = 0;
    for (int y = static_cast<int>((rect.y + inset) * scale);
         y < static_cast<int>((rect.y + rect.height - inset) * scale); ++y) {
      for (int x = static_cast<int>((rect.x + inset) * scale);
           x < static_cast<int>((rect.x + rect.width - inset) * scale); ++x) {
        largest = std::max(largest, difference(a.pixel(x, y), b.pixel(x, y)));
      }
    }
    return largest;
  }

  bool isAtDeeperTile(std::int64_t depth, double x, double y) const {
    return std::ranges::any_of(tiles_.all(), [&](const CanvasTile& tile) {
      const Rect rect = tile.rect.rect();
      return tile.rect.depth > depth && x > rect.x - 2 && x < rect.x + rect.width + 2 &&
             y > rect.y - 2 && y < rect.y + rect.height + 2;
    });
  }

  static std::vector<DiskNode> files(const std::string& folder, int count) {
    std::vector<DiskNode> made;
    for (int i = 0; i < count; ++i) made.push_back(fileNode(folder + "/" + std::to_string(i), 10));
    return made;
  }

  // /r/a, half of the canvas, has space for a hundred tiles and few in it: the folder before it
  // takes the rest of the tiles that a map may have.
  void showSparseFolder() {
    std::vector<DiskNode> first;
    for (const char* path :
         {"/r/first/0", "/r/first/1", "/r/first/2", "/r/first/3", "/r/first/4"}) {
      first.push_back(folderNode(path, 1000, files(path, 97)));
    }
    const DiskNode root = folderNode(
        "/r", 9900,
        {folderNode("/r/first", 5000, first), folderNode("/r/a", 4900, files("/r/a", 100))});
    tiles_ = CanvasTiles(root, size, {filters_, grown_, selected_, false});
  }

  // The largest difference between the overlay of `tile` and painting it in order, up to a point
  // around it. Tiles inside it and their antialiased edges do not count.
  int differenceOf(std::size_t tile, double scale) {
    const QImage with = composed(tile, scale);
    const QImage expected = painted(tile, scale);
    const Rect rect = tiles_[tile].rect.rect();
    int largest = 0;
    const int bottom = static_cast<int>((rect.y + rect.height + 1) * scale);
    const int right = static_cast<int>((rect.x + rect.width + 1) * scale);
    for (int y = static_cast<int>((rect.y - 1) * scale); y < bottom; ++y) {
      for (int x = static_cast<int>((rect.x - 1) * scale); x < right; ++x) {
        if (isAtDeeperTile(tiles_[tile].rect.depth, (x + 0.5) / scale, (y + 0.5) / scale)) continue;
        largest = std::max(largest, difference(with.pixel(x, y), expected.pixel(x, y)));
      }
    }
    return largest;
  }

  static int areaOf(const QRect& rect) { return rect.width() * rect.height(); }

  static QRegion regionOf(const std::vector<PixelCanvas>& pieces) {
    QRegion region;
    for (const PixelCanvas& piece : pieces) region += piece.area();
    return region;
  }

  std::vector<BloatFilter> filters_;
  std::set<std::string> grown_;
  std::set<std::string> selected_;
  CanvasTiles tiles_{sample(), size, {filters_, grown_, selected_, false}};
  LabelPainter labels_;
};

TEST_F(MapPictureTest, the_whole_picture_is_every_tile_painted_in_order) {
  EXPECT_EQ(MapPicture::whole(tiles_, size, 1, labels_).image(), painted(std::nullopt));
}

TEST_F(MapPictureTest, the_whole_picture_is_opaque_except_at_its_corners) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const PixelCanvas canvas = MapPicture::whole(tiles_, size, scale, labels_);
    const QRect part = TilePainter::opaquePart(size, scale);
    EXPECT_EQ(part.width(), canvas.area().width());
    EXPECT_GT(part.height(), canvas.area().height() - 50 * scale);
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) {
        ASSERT_EQ(qAlpha(canvas.image().pixel(x, y)), 255) << x << "," << y << " at " << scale;
      }
    }
  }
}

TEST_F(MapPictureTest, a_canvas_that_ends_inside_a_pixel_or_is_all_corners_is_not_opaque) {
  EXPECT_TRUE(TilePainter::opaquePart({601, 400}, 1.25).isEmpty());
  EXPECT_TRUE(TilePainter::opaquePart({600, 12}, 1).isEmpty());
}

TEST_F(MapPictureTest, the_overlay_of_a_file_equals_painting_it_in_order) {
  for (const char* path : {"/r/file0", "/r/a/0", "/r/a/3", "/r/file4"}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      EXPECT_LE(differenceOf(index(path), scale), 1) << path << " at " << scale;
    }
  }
}

TEST_F(MapPictureTest, the_overlay_of_a_small_tile_is_one_piece) {
  EXPECT_EQ(MapPicture::highlight(tiles_, index("/r/file4"), size, 1, labels_).size(), 1u);
}

TEST_F(MapPictureTest, the_overlay_of_a_nearly_empty_folder_equals_painting_it_in_order) {
  showSparseFolder();
  const std::size_t folder = index("/r/a");
  for (const double scale : {1.0, 1.5}) {
    EXPECT_LE(differenceOf(folder, scale), 1) << scale;
  }
}

TEST_F(MapPictureTest, the_overlay_of_a_folder_is_under_the_glow_of_selected_tiles_in_it) {
  for (const DiskNode& file : files("/r/a", 100)) selected_.insert(file.path());
  showSparseFolder();
  const std::size_t folder = index("/r/a");
  ASSERT_TRUE(tiles_[index("/r/a/0")].selected);
  EXPECT_LE(differenceOf(folder, 1), 1);
}

TEST_F(MapPictureTest, the_overlay_of_a_folder_changes_its_header_and_no_tile_in_it) {
  const std::size_t folder = index("/r/a");
  ASSERT_TRUE(tiles_[folder].rect.nested);
  const QImage plain = painted(std::nullopt);
  const QImage with = composed(folder);
  const Rect rect = tiles_[folder].rect.rect();
  EXPECT_LE(differenceIn(with, painted(folder), {rect.x, rect.y, rect.width, 19}, 0), 1);
  EXPECT_GT(differenceIn(with, plain, {rect.x, rect.y, rect.width, 19}, 0), 10);
  for (int i = 0; i < 6; ++i) {
    const Rect inside = tiles_[index("/r/a/" + std::to_string(i))].rect.rect();
    EXPECT_EQ(differenceIn(with, plain, inside, insideCorners), 0) << i;
  }
}

TEST_F(MapPictureTest, the_glow_of_the_overlay_covers_earlier_tiles_and_not_later_ones) {
  const std::size_t tile = index("/r/file1");
  const QImage plain = painted(std::nullopt);
  const QImage with = composed(tile);
  const Rect earlier = tiles_[index("/r/file0")].rect.rect();
  const Rect later = tiles_[index("/r/file2")].rect.rect();
  EXPECT_GT(differenceIn(with, plain, earlier, 0), 10);
  EXPECT_EQ(differenceIn(with, plain, later, insideCorners), 0);
}

TEST_F(MapPictureTest, a_selected_tile_has_no_overlay) {
  select({"/r/file1"});
  EXPECT_TRUE(MapPicture::highlight(tiles_, index("/r/file1"), size, 1, labels_).empty());
}

TEST_F(MapPictureTest, the_overlay_shows_the_glow_of_selected_neighbours) {
  for (const char* neighbour : {"/r/file0", "/r/file2", "/r/a/5"}) {
    select({neighbour});
    for (const char* path : {"/r/file1", "/r/a"}) {
      const std::size_t tile = index(path);
      const Rect rect = tiles_[tile].rect.rect();
      EXPECT_LE(differenceIn(composed(tile), painted(tile), {rect.x, rect.y, rect.width, 19}, 0), 2)
          << path << " beside " << neighbour;
    }
  }
}

TEST_F(MapPictureTest, the_overlay_shows_the_glow_of_a_selected_tile_two_levels_deeper) {
  select({"/r/a/sub/0"});
  const std::size_t tile = index("/r/a");
  ASSERT_EQ(tiles_[index("/r/a/sub/0")].rect.depth, 2);
  const Rect rect = tiles_[tile].rect.rect();
  EXPECT_LE(differenceIn(composed(tile), painted(tile), {rect.x, rect.y, 2, rect.height}, 0), 2);
}

TEST_F(MapPictureTest, the_overlay_covers_only_the_tile_and_its_glow) {
  const std::size_t tile = index("/r/file4");
  const QRect covered =
      regionOf(MapPicture::highlight(tiles_, tile, size, 1, labels_)).boundingRect();
  const Rect rect = tiles_[tile].rect.rect();
  EXPECT_TRUE(covered.contains(QRect(static_cast<int>(rect.x), static_cast<int>(rect.y),
                                     static_cast<int>(rect.width), static_cast<int>(rect.height))));
  EXPECT_LE(covered.width(), rect.width + 32);
  EXPECT_LE(covered.height(), rect.height + 32);
}

TEST_F(MapPictureTest, the_pieces_of_the_overlay_do_not_overlap) {
  const auto pieces = MapPicture::highlight(tiles_, index("/r/a"), size, 1, labels_);
  ASSERT_GT(pieces.size(), 1u);
  EXPECT_LE(pieces.size(), 24u);
  int pixels = 0;
  for (const PixelCanvas& piece : pieces) pixels += areaOf(piece.area());
  int together = 0;
  for (const QRect& part : regionOf(pieces)) together += areaOf(part);
  EXPECT_EQ(pixels, together);
}

TEST_F(MapPictureTest, the_overlay_of_a_folder_leaves_out_the_tiles_in_it) {
  const std::size_t folder = index("/r/a");
  const QRegion covered = regionOf(MapPicture::highlight(tiles_, folder, size, 1, labels_));
  for (const char* path : {"/r/a/sub", "/r/a/0", "/r/a/1"}) {
    const Rect inside = tiles_[index(path)].rect.rect();
    EXPECT_FALSE(covered.contains(QPoint(static_cast<int>(inside.x + inside.width / 2),
                                         static_cast<int>(inside.y + inside.height / 2))))
        << path;
  }
}

TEST_F(MapPictureTest, the_overlay_of_a_folder_with_very_many_tiles_has_few_pieces) {
  std::vector<DiskNode> inner;
  for (int i = 0; i < 60; ++i) inner.push_back(fileNode("/r/a/" + std::to_string(i), 100));
  const DiskNode root = folderNode("/r", 6000, {folderNode("/r/a", 6000, inner)});
  tiles_ = CanvasTiles(root, size, {filters_, grown_, selected_, false});
  const std::size_t folder = index("/r/a");
  ASSERT_GT(tiles_.all().size(), 50u);
  EXPECT_LE(MapPicture::highlight(tiles_, folder, size, 1, labels_).size(), 24u);
  const Rect rect = tiles_[folder].rect.rect();
  EXPECT_LE(differenceIn(composed(folder), painted(folder), {rect.x, rect.y, rect.width, 19}, 0),
            1);
}

}  // namespace
}  // namespace tessaly
