#include "app/preview/pages/AnswerWriter.h"

namespace tessaly {

bool AnswerWriter::writePages(int count) {
  return put(ReaderAnswer::pagesPiece(count));
}

// Rows of 32-bit pixels have no padding.
bool AnswerWriter::writePicture(const QImage& picture) {
  return put(ReaderAnswer::pictureHead(picture.width(), picture.height(),
                                       !picture.hasAlphaChannel())) &&
         put(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
}

bool AnswerWriter::writeVerdict(ReaderAnswer::Verdict verdict) {
  return put(ReaderAnswer::verdictPiece(verdict));
}

bool AnswerWriter::write(const Decoded& decoded) {
  if (const auto* verdict = std::get_if<ReaderAnswer::Verdict>(&decoded)) {
    return writeVerdict(*verdict);
  }
  if (const auto* preview = std::get_if<ImagePreview>(&decoded)) {
    return put(ReaderAnswer::sizePiece(preview->pixels.width(), preview->pixels.height())) &&
           writePicture(preview->image) && writeVerdict(ReaderAnswer::Verdict::shown);
  }
  for (const auto& [name, value] : std::get<MediaPreview>(decoded).facts) {
    const std::string nameBytes = name.toStdString();
    const std::string valueBytes = value.toStdString();
    if (!put(ReaderAnswer::factHead(nameBytes.size(), valueBytes.size())) || !put(nameBytes) ||
        !put(valueBytes)) {
      return false;
    }
  }
  return writeVerdict(ReaderAnswer::Verdict::shown);
}

bool AnswerWriter::put(const char* bytes, qint64 count) {
  while (count > 0) {
    const qint64 written = out_.write(bytes, count);
    if (written <= 0) return false;
    bytes += written;
    count -= written;
  }
  return true;
}

bool AnswerWriter::put(const std::string& bytes) {
  return put(bytes.data(), static_cast<qint64>(bytes.size()));
}

}  // namespace tessaly
