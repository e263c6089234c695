// Writes a ReaderAnswer piece by piece. Not thread-safe.
#pragma once

#include <string>

#include <QIODevice>
#include <QImage>

#include "app/preview/pages/Decoded.h"

namespace tessaly {

class AnswerWriter {
 public:
  // `out` is open, and must outlive this object.
  explicit AnswerWriter(QIODevice& out) : out_(out) {}

  // The number of pages in a document.
  bool writePages(int count);
  // A picture in one of the screen formats RGB32 and ARGB32_Premultiplied. Like the others, false
  // once nobody reads the answer any more.
  bool writePicture(const QImage& picture);
  // Ends the answer.
  bool writeVerdict(ReaderAnswer::Verdict verdict);
  // The complete answer for a file other than a document.
  bool write(const Decoded& decoded);

 private:
  bool put(const char* bytes, qint64 count);
  bool put(const std::string& bytes);

  QIODevice& out_;
};

}  // namespace tessaly
