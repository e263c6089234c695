#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include "app/preview/PreviewFailures.h"
#include "app/preview/ReaderProgram.h"
#include "support/PreviewFile.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using namespace std::string_literals;

// One reader for all tests, so that each finds a waiting process.
class ReaderProgramDocument : public testing::Test {
 public:
  static ReaderProgram& reader() { return *reader_; }

 protected:
  static void SetUpTestSuite() { reader_ = std::make_unique<ReaderProgram>(); }
  static void TearDownTestSuite() { reader_.reset(); }

 private:
  static inline std::unique_ptr<ReaderProgram> reader_;
};

PreviewBody readAt(const std::string& path, const PreviewRequest& request = {}) {
  return ReaderProgramDocument::reader()
      .read(held(path), ReaderRequest::Wanted::document, {}, request)
      .value_or(FactsOnly{});
}

PreviewBody readBytes(const std::string& bytes, const PreviewRequest& request = {}) {
  const TempTree tree;
  putFile(tree.at("document"), bytes);
  return readAt(tree.at("document"), request);
}

PagesPreview pagesIn(const PreviewBody& body) {
  if (const auto* pages = std::get_if<PagesPreview>(&body)) return *pages;
  ADD_FAILURE() << "no pages: " << body.index();
  return {};
}

std::string reasonIn(const PreviewBody& body) {
  const auto* failure = std::get_if<PreviewFailure>(&body);
  return failure != nullptr ? failure->reason.toStdString() : "no failure";
}

const std::string damaged = PreviewFailures::damagedDocument().reason.toStdString();

PreviewRequest withWidth(int width) {
  PreviewRequest request;
  request.limits.pixels = {width, width};
  return request;
}

// Pages of this size in points. The upper left quarter of each is red.
std::string document(int pages, double width = 200, double height = 100) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setPageLayout(QPageLayout(QPageSize(QSizeF(width, height), QPageSize::Point),
                                   QPageLayout::Portrait, QMarginsF()));
  QPainter painter(&writer);
  for (int i = 0; i < pages; ++i) {
    if (i > 0) writer.newPage();
    painter.fillRect(QRect(0, 0, writer.width() / 2, writer.height() / 2), Qt::red);
  }
  painter.end();
  return bytes.toStdString();
}

TEST_F(ReaderProgramDocument, pages_are_rendered_on_white_with_the_requested_width) {
  const PagesPreview preview = pagesIn(readBytes(document(3), withWidth(300)));
  EXPECT_EQ(preview.count, 3);
  ASSERT_EQ(preview.pages.size(), 3U);
  for (const QImage& page : preview.pages) {
    EXPECT_EQ(page.width(), 300);
    EXPECT_NEAR(page.height(), 150, 1);
    EXPECT_EQ(colorsOf(page), "rwww");
    EXPECT_FALSE(page.hasAlphaChannel());
  }
}

TEST_F(ReaderProgramDocument, all_pages_are_counted_and_the_first_are_rendered) {
  PreviewRequest request = withWidth(50);
  request.limits.pages = 4;
  const PagesPreview preview = pagesIn(readBytes(document(9), request));
  EXPECT_EQ(preview.count, 9);
  EXPECT_EQ(preview.pages.size(), 4U);
}

TEST_F(ReaderProgramDocument, the_memory_limits_the_number_of_rendered_pages) {
  PreviewRequest request = withWidth(100);
  request.limits.pageBytes = 3 * 100 * 50 * 4 + 100;
  const PagesPreview preview = pagesIn(readBytes(document(9), request));
  EXPECT_EQ(preview.count, 9);
  EXPECT_EQ(preview.pages.size(), 3U);
}

TEST_F(ReaderProgramDocument, a_very_tall_page_is_rendered_narrower) {
  const PagesPreview preview = pagesIn(readBytes(document(1, 10, 1000), withWidth(100)));
  ASSERT_EQ(preview.pages.size(), 1U);
  EXPECT_NEAR(preview.pages[0].width(), 4, 1);
  EXPECT_NEAR(preview.pages[0].height(), 400, 1);
}

TEST_F(ReaderProgramDocument, a_damaged_document_is_reported) {
  const std::string whole = document(2);
  EXPECT_EQ(reasonIn(readBytes(whole.substr(0, 100))), damaged);
  EXPECT_EQ(reasonIn(readBytes("%PDF-1.4\n")), damaged);
  EXPECT_EQ(reasonIn(readBytes("%PDF-1.4\n" + std::string(100'000, 'x'))), damaged);
}

TEST_F(ReaderProgramDocument, a_truncated_document_gives_pages_or_is_reported_as_damaged) {
  const std::string whole = document(2);
  for (std::size_t length = 0; length < whole.size(); length += whole.size() / 40) {
    const PreviewBody body = readBytes(whole.substr(0, length), withWidth(20));
    EXPECT_TRUE(std::holds_alternative<PagesPreview>(body) || reasonIn(body) == damaged) << length;
  }
}

// A page tree that contains itself: the renderer loops for ever.
std::string endless() {
  std::string bytes = document(3);
  const std::size_t kids = bytes.find("/Kids");
  const std::size_t first = bytes.find_first_of("0123456789", kids);
  return bytes.replace(first, bytes.find(' ', first) - first, "3");
}

// Just enough to require a password: no key fits.
std::string locked(const std::string& algorithm) {
  return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]>>endobj\n"
         "4 0 obj<</Filter" +
         algorithm + "/O<" + std::string(64, '1') + ">/U<" + std::string(64, '2') +
         ">/P -4>>endobj\ntrailer<</Root 1 0 R/Size 5/Encrypt 4 0 R/ID[<" + std::string(32, '3') +
         "><" + std::string(32, '3') + ">]>>\n%%EOF\n";
}

TEST_F(ReaderProgramDocument, a_document_that_needs_a_password_is_reported) {
  EXPECT_EQ(reasonIn(readBytes(locked("/Standard/V 1/R 2"))),
            "This document cannot be shown because it needs a password.");
}

TEST_F(ReaderProgramDocument, an_unknown_encryption_is_reported) {
  EXPECT_EQ(reasonIn(readBytes(locked("/Unheard.Of/V 99/R 99"))),
            "This document is encrypted in a way that cannot be read here.");
}

TEST_F(ReaderProgramDocument, a_document_over_the_size_limit_is_not_read) {
  PreviewRequest request;
  request.limits.documentBytes = 1000;
  EXPECT_EQ(reasonIn(readBytes(document(5), request)), "This document is too large to be shown.");
}

TEST_F(ReaderProgramDocument, cancelling_stops_rendering) {
  for (const int limit : {1, 2, 3}) {
    int polls = 0;
    PreviewRequest request;
    request.cancelled = [&] { return ++polls >= limit; };
    // Rendering never ends, so only cancelling can stop it.
    request.limits.seconds = 1e9;
    EXPECT_TRUE(std::holds_alternative<FactsOnly>(readBytes(endless(), request))) << limit;
  }
}

TEST_F(ReaderProgramDocument, a_document_that_keeps_the_renderer_busy_is_reported_as_damaged) {
  PreviewRequest request;
  request.limits.seconds = 0.1;
  EXPECT_EQ(reasonIn(readBytes(endless(), request)), damaged);
}

TEST_F(ReaderProgramDocument, several_threads_can_render_at_once) {
  const TempTree tree;
  putFile(tree.at("document"), document(4));
  std::vector<PreviewBody> bodies(4);
  std::vector<std::thread> threads;
  for (PreviewBody& body : bodies) {
    threads.emplace_back([&tree, &body] { body = readAt(tree.at("document"), withWidth(200)); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const PreviewBody& body : bodies) {
    const PagesPreview preview = pagesIn(body);
    ASSERT_EQ(preview.pages.size(), 4U);
    for (const QImage& page : preview.pages) EXPECT_EQ(colorsOf(page), "rwww");
  }
}

}  // namespace
}  // namespace tessaly
