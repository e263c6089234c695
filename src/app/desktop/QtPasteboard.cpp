#include "app/desktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tessaly {

void QtPasteboard::setText(const std::string& text) {
  // As bytes under the type of plain text, which reaches other programs unchanged; a QString would
  // replace what is not UTF-8.
  auto* data = new QMimeData;
  data->setData(QStringLiteral("text/plain"), QByteArray::fromStdString(text));
  QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace tessaly
