// Writes a ReaderAnswer, piece by piece as they are done. On one thread.
#pragma once

#include <string>

#include <QIODevice>
#include <QImage>

#include "app/preview/pages/Decoded.h"

namespace tessaly {

class AnswerWriter {
 public:
  // `out` is open, and outlives this object.
  explicit AnswerWriter(QIODevice& out) : out_(out) {}

  // How many pages a document has.
  bool writePages(int count);
  // A picture of one of the formats that screens show: RGB32, or ARGB32_Premultiplied. As with the
  // others, false once nobody takes the answer any more.
  bool writePicture(const QImage& picture);
  // Ends the answer.
  bool writeVerdict(ReaderAnswer::Verdict verdict);
  // All of an answer that is no document.
  bool write(const Decoded& decoded);

 private:
  bool put(const char* bytes, qint64 count);
  bool put(const std::string& bytes);

  QIODevice& out_;
};

}  // namespace tessaly
