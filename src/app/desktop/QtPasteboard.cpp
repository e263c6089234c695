#include "app/desktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tessaly {

void QtPasteboard::setText(const std::string& text) {
  // As bytes of the type plain text, which other programs get unchanged; a QString would replace
  // bytes that are not UTF-8.
  auto* data = new QMimeData;
  data->setData(QStringLiteral("text/plain"), QByteArray::fromStdString(text));
  QGuiApplication::clipboard()->setMimeData(data);
}

}  // namespace tessaly
