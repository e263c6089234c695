// Whether a picture's file is as long as it says: for the formats whose decoders make up what is
// missing. On the calling thread.
#pragma once

#include <QIODevice>

namespace tessaly::ImageStructure {

// From the device's beginning; what it is at afterwards is left open. A file that is not of the
// format is complete, which its decoder may judge.
bool isCompleteBmp(QIODevice& file);
// At least its first frame.
bool isCompleteGif(QIODevice& file);

}  // namespace tessaly::ImageStructure
