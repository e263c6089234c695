// Blurs opacity, so that shadows and glows can be painted on the processor.
//
// The blur is three box blurs, which approximate a Gaussian (W. M. Wells, "Efficient synthesis of
// Gaussian filters by cascaded uniform filters", 1986). Each box ends in a sample of less weight,
// so that the three have exactly the requested standard deviation (P. Gwosdek et al., "Theoretical
// foundations of Gaussian convolution by extended box filtering", 2011). Pure, safe from any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include <QImage>

namespace tessaly::AlphaBlur {

// How many pixels a blur extends beyond the shape. `sigma` is the standard deviation in pixels.
int margin(double sigma);

// Blurs `count` values with a distance of `stride`. Values beyond them count as 0.
void blurLine(std::uint8_t* line, int count, std::ptrdiff_t stride, double sigma);

// Blurs an image in the format Alpha8.
void blur(QImage& alpha, double sigma);

}  // namespace tessaly::AlphaBlur
