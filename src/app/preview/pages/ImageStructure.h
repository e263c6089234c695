// Whether an image file has its full length, for formats whose decoders fill in missing data. Runs
// on the calling thread.
#pragma once

#include <QIODevice>

namespace tessaly::ImageStructure {

// Reads from the device's beginning; its position is unspecified afterwards. A file of another
// format counts as complete, since its decoder decides.
bool isCompleteBmp(QIODevice& file);
// Up to the end of its first frame.
bool isCompleteGif(QIODevice& file);

}  // namespace tessaly::ImageStructure
