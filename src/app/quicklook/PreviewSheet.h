// The texts, rows and pictures that the preview's window shows. A plain value, made on a worker
// thread so that a long text does not block the main thread.
#pragma once

#include <string>
#include <vector>

#include <QImage>
#include <QString>
#include <QTimeZone>

#include "app/preview/PreviewContent.h"
#include "app/quicklook/PreviewRow.h"
#include "app/quicklook/PreviewScreen.h"
#include "app/quicklook/TextLines.h"

namespace tessaly {

struct PreviewSheet {
  PreviewScreen::Kind body = PreviewScreen::Kind::Nothing;
  QString name;
  QString symbol;  // of the file's kind; empty while it is unknown
  QString size;    // empty for a folder, and while it is unknown

  // The text below the symbol of a body that is no picture, text or list: the file's name, or why
  // it cannot be shown.
  QString headline;
  QString headlineSymbol;
  std::vector<PreviewRow> rows;  // facts, or the items of a folder
  TextLines lines;
  std::vector<QImage> pictures;  // an image, or pages

  QString notice;       // a note beside the body, such as what was left out; or empty
  QString description;  // of the body, for screen readers

  // What is known about the item at `path` before it is read.
  static PreviewSheet loading(const std::string& path);

  // Times are shown in `zone`.
  static PreviewSheet of(PreviewContent content,
                         const QTimeZone& zone = QTimeZone::systemTimeZone());
};

}  // namespace tessaly
