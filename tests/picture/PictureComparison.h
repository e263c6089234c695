// Compares two pictures of the same screen pixel by pixel: the kept one and the new one.
#pragma once

#include <string>
#include <vector>

#include <QImage>
#include <QRect>

namespace tessaly {

struct PictureDifference {
  bool isOtherSize = false;
  int pixels = 0;             // number of pixels that differ by more than is accepted
  int largest = 0;            // largest difference of all pixels, in any channel, of 255
  std::vector<QRect> places;  // areas with these pixels, from top to bottom
};

namespace PictureComparison {

// The accepted difference of a channel, of 255, and the accepted number of pixels that differ by
// more. Rounding is accepted; the smallest thing that is drawn (a dot of 5 by 5) is not.
inline constexpr int mostInAChannel = 2;
inline constexpr int mostPixels = 8;

// Pixels in `known` are not compared.
PictureDifference differenceOf(const QImage& kept, const QImage& seen,
                               const std::vector<QRect>& known = {});

bool isSame(const PictureDifference& difference);

// In words, with the places: "1200 pixels differ by up to 80: 20,40 160x12; 300,300 16x16".
std::string described(const PictureDifference& difference);

// The kept picture, faint, with the changes above it in a bright colour. If the sizes differ, only
// the new picture.
QImage pictureOfDifference(const QImage& kept, const QImage& seen);

}  // namespace PictureComparison

}  // namespace tessaly
