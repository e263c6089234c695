#include "app/quicklook/TextLines.h"

#include <algorithm>

#include <QTextBoundaryFinder>

namespace tessaly {

namespace {

// The length of the first line of `text`, which is longer than a line may be; no character is
// split.
qsizetype firstPiece(QStringView text) {
  // A base character with its marks is seldom longer than this.
  constexpr qsizetype lookAhead = 32;
  const QStringView window = text.first(std::min(text.size(), TextLines::longest + lookAhead));
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, window.data(), window.size());
  finder.setPosition(TextLines::longest);
  if (!finder.isAtBoundary()) finder.toPreviousBoundary();
  return finder.position() > 0 ? finder.position() : TextLines::longest;
}

}  // namespace

TextLines::TextLines(const QString& text) {
  text_.reserve(text.size());
  qsizetype start = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar character = text[at];
    if (character == u'\n' || character == u'\r') {
      if (character == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
      addLine(start);
      start = text_.size();
    } else if (character == u'\t') {
      const qsizetype column = text_.size() - start;
      text_.append(QString(tabStop - column % tabStop, u' '));
    } else {
      text_.append(character.category() == QChar::Other_Control ? QChar(QChar::ReplacementCharacter)
                                                                : character);
    }
  }
  if (text_.size() > start) addLine(start);
}

void TextLines::addLine(qsizetype start) {
  qsizetype length = text_.size() - start;
  while (length > longest) {
    const qsizetype piece = firstPiece(QStringView(text_).sliced(start, length));
    lines_.push_back({start, piece});
    start += piece;
    length -= piece;
  }
  lines_.push_back({start, length});
}

QStringView TextLines::operator[](std::size_t index) const {
  const Line& line = lines_[index];
  return QStringView(text_).sliced(line.start, line.length);
}

}  // namespace tessaly
