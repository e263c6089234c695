// Answers one request: opens the file, decodes it, writes the answer.
//
// Needs a QGuiApplication for the texts in SVG drawings.
#pragma once

#include "app/preview/ReaderRequest.h"
#include "app/preview/pages/AnswerWriter.h"

namespace tessaly::FileAnswer {

void write(const ReaderRequest& request, AnswerWriter& answer);

}  // namespace tessaly::FileAnswer
