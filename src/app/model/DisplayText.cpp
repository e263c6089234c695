#include "app/model/DisplayText.h"

#include <algorithm>

#include "platform/UnicodeText.h"

namespace tessaly {
namespace {

// Surrogates are none of these.
bool misleads(QChar character) {
  return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator ||
         UnicodeText::isDirectionControl(character.unicode());
}

}  // namespace

QString displayText(std::string_view bytes) {
  QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (std::any_of(text.cbegin(), text.cend(), misleads)) {
    std::replace_if(text.begin(), text.end(), misleads, QChar(QChar::ReplacementCharacter));
  }
  return text;
}

}  // namespace tessaly
