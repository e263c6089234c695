#include "support/Look.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QQmlEngine>
#include <QQmlProperty>

#include "support/WindowItems.h"

namespace tessaly {

namespace {

QString describe(const QColor& color) {
  return QStringLiteral("%1 at %2")
      .arg(color.name(QColor::HexRgb))
      .arg(static_cast<double>(color.alphaF()), 0, 'f', 2);
}

QQuickItem* itemAt(QQuickItem* top, const QString& names) {
  QQuickItem* item = top;
  for (const QString& name : names.split(u'/', Qt::SkipEmptyParts)) {
    if (item != nullptr) item = itemNamed(item, name);
  }
  return item;
}

}  // namespace

void expectLook(QQuickItem* top, const std::vector<LookRow>& rows) {
  ASSERT_NE(top, nullptr);
  for (const LookRow& row : rows) {
    SCOPED_TRACE((row.item + u'.' + row.property).toStdString());
    QQuickItem* const item = itemAt(top, row.item);
    if (item == nullptr) {
      ADD_FAILURE() << "no single such item is shown";
      continue;
    }
    const QQmlProperty property(item, row.property, qmlEngine(item));
    EXPECT_TRUE(property.isValid());
    const QVariant actual = property.read();
    if (actual.metaType() == QMetaType::fromType<QColor>()) {
      EXPECT_EQ(describe(actual.value<QColor>()).toStdString(),
                row.expected.toString().toStdString());
    } else if (row.expected.metaType() == QMetaType::fromType<QString>()) {
      EXPECT_EQ(actual.toString().toStdString(), row.expected.toString().toStdString());
    } else {
      EXPECT_NEAR(actual.toDouble(), row.expected.toDouble(), 0.001);
    }
  }
}

}  // namespace tessaly
