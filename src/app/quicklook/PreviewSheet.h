// A preview in the words, rows and pictures that its window shows. A plain value, made on a worker
// thread so that a long text holds nobody up.
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
  QString symbol;  // of the file's kind; empty while that is not known
  QString size;    // empty for a folder, and while it is not known

  // What stands below the symbol of a body that is no picture, text or list: the file's name, or
  // why it cannot be shown.
  QString headline;
  QString headlineSymbol;
  std::vector<PreviewRow> rows;  // facts, or the items of a folder
  TextLines lines;
  std::vector<QImage> pictures;  // an image, or pages

  QString notice;       // what is to be known beside the body, such as what was left out; or empty
  QString description;  // of what is shown, for those who cannot see it

  // What can be said of the item at `path` before anything is read.
  static PreviewSheet loading(const std::string& path);

  // Times are given in `zone`.
  static PreviewSheet of(PreviewContent content,
                         const QTimeZone& zone = QTimeZone::systemTimeZone());
};

}  // namespace tessaly
