// Compares properties of a control's items with a table. A Scene has a read(item, property), like
// ControlScene.
#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

#include <QFont>

#include "app/controls/ControlScene.h"

namespace tessaly {

struct PropertyRow {
  QString item;
  QString property;
  QVariant expected;
};

// Expected values: colours as text, "#rrggbb at 0.18"; numbers to a thousandth.
template <class Scene>
void expectProperties(const Scene& scene, const std::vector<PropertyRow>& rows) {
  for (const PropertyRow& row : rows) {
    SCOPED_TRACE((row.item + "." + row.property).toStdString());
    const QVariant actual = scene.read(row.item, row.property);
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
