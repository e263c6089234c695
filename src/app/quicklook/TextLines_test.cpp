#include "app/quicklook/TextLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include <QAbstractItemModelTester>

#include "app/quicklook/TextLinesModel.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> linesOf(const QString& text) {
  const TextLines lines(text);
  std::vector<std::string> result;
  for (std::size_t i = 0; i < lines.size(); ++i)
    result.push_back(lines[i].toString().toStdString());
  return result;
}

QString repeated(qsizetype count, QChar character = u'x') {
  return QString(count, character);
}

TEST(TextLines, an_empty_text_has_no_lines) {
  EXPECT_THAT(linesOf({}), IsEmpty());
}

TEST(TextLines, lines_end_in_every_kind_of_line_end) {
  EXPECT_THAT(linesOf("a\nb\r\nc\rd"), ElementsAre("a", "b", "c", "d"));
}

TEST(TextLines, empty_lines_between_others_are_kept) {
  EXPECT_THAT(linesOf("\na\n\r\n\rb"), ElementsAre("", "a", "", "", "b"));
}

TEST(TextLines, there_is_no_empty_line_after_the_last_line_end) {
  EXPECT_THAT(linesOf("a\n"), ElementsAre("a"));
  EXPECT_THAT(linesOf("\n"), ElementsAre(""));
}

TEST(TextLines, a_tab_reaches_the_next_tab_stop) {
  EXPECT_THAT(linesOf("\tx\nab\tx\nabcd\tx"), ElementsAre("    x", "ab  x", "abcd    x"));
}

TEST(TextLines, control_characters_are_replaced) {
  EXPECT_THAT(linesOf(QString::fromLatin1("a\x1b[0m\0b", 7)),
              ElementsAre("a\xef\xbf\xbd[0m\xef\xbf\xbd"
                          "b"));
}

TEST(TextLines, a_line_that_is_too_long_continues_on_the_next) {
  EXPECT_THAT(linesOf(repeated(TextLines::longest) + "\nb"),
              ElementsAre(std::string(TextLines::longest, 'x'), "b"));
  EXPECT_THAT(
      linesOf(repeated(2 * TextLines::longest + 1)),
      ElementsAre(std::string(TextLines::longest, 'x'), std::string(TextLines::longest, 'x'), "x"));
}

TEST(TextLines, no_character_is_split) {
  const QString fox = QString::fromUtf8("\xf0\x9f\xa6\x8a");  // two units
  const TextLines ofPairs(repeated(TextLines::longest - 1) + fox + "y");
  ASSERT_EQ(ofPairs.size(), 2U);
  EXPECT_EQ(ofPairs[1].toString(), fox + "y");

  const QString marked = QString::fromUtf8("e\xcc\x81");
  const TextLines ofMarks(repeated(TextLines::longest - 1) + marked);
  ASSERT_EQ(ofMarks.size(), 2U);
  EXPECT_EQ(ofMarks[1].toString(), marked);
}

TEST(TextLines, splitting_ends_even_inside_an_endless_character) {
  const TextLines lines("a" + repeated(3 * TextLines::longest, QChar(0x0301)));
  EXPECT_EQ(lines.size(), 4U);
}

TEST(TextLinesModel, the_model_has_the_lines_in_order) {
  TextLinesModel model;
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_EQ(model.rowCount(), 0);
  model.setLines(TextLines("a\nb"));
  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.data(model.index(1), TextLinesModel::LineRole).toString(), "b");
  model.setLines({});
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace tessaly
