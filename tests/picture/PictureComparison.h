// Two pictures of the same screen, pixel by pixel: the one that was kept and the one that is seen.
#pragma once

#include <string>
#include <vector>

#include <QImage>
#include <QRect>

namespace tessaly {

struct PictureDifference {
  bool isOtherSize = false;
  int pixels = 0;             // that differ by more than they may
  int largest = 0;            // difference of all, in any channel, of 255
  std::vector<QRect> places;  // where these pixels are, in pixels, from top to bottom
};

namespace PictureComparison {

// How far a channel of a pixel may be off, of 255, and how many pixels may be off by more. A
// rounding is let pass, the smallest thing that is drawn (a dot of 5 by 5) is not.
inline constexpr int mostInAChannel = 2;
inline constexpr int mostPixels = 8;

// What lies in `known` is not compared.
PictureDifference differenceOf(const QImage& kept, const QImage& seen,
                               const std::vector<QRect>& known = {});

bool isSame(const PictureDifference& difference);

// In words, with the places: "1200 pixels differ by up to 80: 20,40 160x12; 300,300 16x16".
std::string described(const PictureDifference& difference);

// What was kept, faint, and over it in a glaring colour what has changed. Of two that are not of
// one size, nothing but the one that is seen.
QImage pictureOfDifference(const QImage& kept, const QImage& seen);

}  // namespace PictureComparison

}  // namespace tessaly
