#include "app/desktop/QtPasteboard.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tessaly {
namespace {

TEST(QtPasteboard, setting_a_text_replaces_the_clipboard) {
  QtPasteboard pasteboard;
  QGuiApplication::clipboard()->setText(QStringLiteral("old"));
  pasteboard.setText("/home/ada/\xc3\xa9");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("/home/ada/\xc3\xa9"));
}

TEST(QtPasteboard, bytes_that_are_not_utf8_are_kept) {
  QtPasteboard pasteboard;
  pasteboard.setText("/caf\xe9");
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  EXPECT_EQ(data->data(QStringLiteral("text/plain")), QByteArray("/caf\xe9"));
}

}  // namespace
}  // namespace tessaly
