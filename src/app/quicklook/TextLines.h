// A text split into lines, so that only visible lines need a layout. A plain value.
#pragma once

#include <vector>

#include <QString>
#include <QStringView>

namespace tessaly {

class TextLines {
 public:
  // The greatest length of a line, in UTF-16 units; a longer one continues on the next.
  static constexpr qsizetype longest = 2000;
  // Columns between tab stops.
  static constexpr qsizetype tabStop = 4;

  TextLines() = default;
  // Lines end in a line feed, a carriage return, or both; a line end at the end of the text adds no
  // empty line. Tabs become blanks, other control characters replacement characters.
  explicit TextLines(const QString& text);

  std::size_t size() const { return lines_.size(); }
  QStringView operator[](std::size_t index) const;

 private:
  struct Line {
    qsizetype start;
    qsizetype length;
  };

  void addLine(qsizetype start);

  QString text_;
  std::vector<Line> lines_;
};

}  // namespace tessaly
