#include "app/model/DisplayText.h"

#include <algorithm>

namespace tessaly {
namespace {

bool breaksTheLine(QChar character) {
  return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

}  // namespace

QString displayText(std::string_view bytes) {
  QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (std::any_of(text.cbegin(), text.cend(), breaksTheLine)) {
    std::replace_if(text.begin(), text.end(), breaksTheLine, QChar(QChar::ReplacementCharacter));
  }
  return text;
}

}  // namespace tessaly
