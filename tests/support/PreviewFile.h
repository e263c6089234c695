// Files in the form that the readers of previews get.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include "platform/HeldItem.h"
#include "support/PlainFiles.h"

namespace tessaly {

// The item at `path`, with its content open if it is a file.
inline HeldItem held(const std::string& path) {
  Result<HeldItem> item = HeldItem::at(path);
  if (!item) throw std::runtime_error(item.error().description());
  if (item.value().facts().type == HeldItem::Type::file && !item.value().openContent()) {
    throw std::runtime_error("cannot be opened: " + path);
  }
  return std::move(item.value());
}

// The bytes of an image file.
inline std::string encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, format)) throw std::runtime_error(std::string("cannot write ") + format);
  return bytes.toStdString();
}

// An image with four colours, so that rotated or mixed-up pictures are noticed: red, green / blue,
// white.
inline QImage quarters(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool isRight = x >= width / 2;
      const QRgb upper = isRight ? qRgb(0, 255, 0) : qRgb(255, 0, 0);
      const QRgb lower = isRight ? qRgb(255, 255, 255) : qRgb(0, 0, 255);
      image.setPixel(x, y, y < height / 2 ? upper : lower);
    }
  }
  return image;
}

// The colours of the quarters from the upper left to the lower right as letters: r, g, b, w, or
// "?".
inline std::string colorsOf(const QImage& image) {
  std::string letters;
  for (const double y : {0.25, 0.75}) {
    for (const double x : {0.25, 0.75}) {
      const QRgb color =
          image.pixel(static_cast<int>(x * image.width()), static_cast<int>(y * image.height()));
      const int bits = (qRed(color) > 200 ? 1 : 0) + (qGreen(color) > 200 ? 2 : 0) +
                       (qBlue(color) > 200 ? 4 : 0);
      letters += "?rg?b??w"[bits];
    }
  }
  return letters;
}

}  // namespace tessaly
