// A text made ready to be shown line by line, so that only the lines in sight have to be laid out.
// A plain value.
#pragma once

#include <vector>

#include <QString>
#include <QStringView>

namespace tessaly {

class TextLines {
 public:
  // Characters (UTF-16 units) of the longest line; a longer one goes on in the next.
  static constexpr qsizetype longest = 2000;
  // Columns from one tab stop to the next.
  static constexpr qsizetype tabStop = 4;

  TextLines() = default;
  // Lines end in a line feed, a carriage return, or both; an ending at the very end begins no other
  // line. Tabs become blanks, other control characters replacement characters.
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
