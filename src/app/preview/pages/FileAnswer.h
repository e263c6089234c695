// Answers one request: opens the file, decodes it, writes what comes of it.
//
// The process has a QGuiApplication, which the letters in an SVG drawing need.
#pragma once

#include "app/preview/ReaderRequest.h"
#include "app/preview/pages/AnswerWriter.h"

namespace tessaly::FileAnswer {

void write(const ReaderRequest& request, AnswerWriter& answer);

}  // namespace tessaly::FileAnswer
