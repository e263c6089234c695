// The palette and the font families as views see them: `Theme.accent`, `Theme.monoFamily`. All of
// it is constant for the life of the program. For a fainter shade use Qt.alpha(Theme.ink, 0.08).
#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/controls/Fonts.h"
#include "app/controls/QtColor.h"
#include "look/MarrowTheme.h"

namespace tessaly {

class Theme : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QColor bg READ bg CONSTANT)
  Q_PROPERTY(QColor bg2 READ bg2 CONSTANT)
  Q_PROPERTY(QColor bg3 READ bg3 CONSTANT)
  Q_PROPERTY(QColor ink READ ink CONSTANT)
  Q_PROPERTY(QColor secondary READ secondary CONSTANT)
  Q_PROPERTY(QColor muted READ muted CONSTANT)
  Q_PROPERTY(QColor accent READ accent CONSTANT)
  Q_PROPERTY(QColor accent2 READ accent2 CONSTANT)
  Q_PROPERTY(QColor success READ success CONSTANT)
  Q_PROPERTY(QColor warning READ warning CONSTANT)
  Q_PROPERTY(QColor error READ error CONSTANT)
  Q_PROPERTY(QColor cyan READ cyan CONSTANT)
  Q_PROPERTY(QColor highlight READ highlight CONSTANT)
  Q_PROPERTY(QColor video READ video CONSTANT)
  Q_PROPERTY(QColor image READ image CONSTANT)
  Q_PROPERTY(QColor document READ document CONSTANT)
  Q_PROPERTY(QColor developer READ developer CONSTANT)
  Q_PROPERTY(QColor archive READ archive CONSTANT)
  Q_PROPERTY(QColor other READ other CONSTANT)
  Q_PROPERTY(QList<QColor> folderPalette READ folderPalette CONSTANT)
  // The end of the primary button's gradient, which starts at the accent.
  Q_PROPERTY(QColor accentDeep READ accentDeep CONSTANT)
  Q_PROPERTY(QString uiFamily READ uiFamily CONSTANT)
  Q_PROPERTY(QString monoFamily READ monoFamily CONSTANT)
  Q_PROPERTY(QString roundedFamily READ roundedFamily CONSTANT)

 public:
  explicit Theme(QObject* parent = nullptr);

  QColor bg() const { return toQColor(MarrowTheme::bg); }
  QColor bg2() const { return toQColor(MarrowTheme::bg2); }
  QColor bg3() const { return toQColor(MarrowTheme::bg3); }
  QColor ink() const { return toQColor(MarrowTheme::ink); }
  QColor secondary() const { return toQColor(MarrowTheme::secondary); }
  QColor muted() const { return toQColor(MarrowTheme::muted); }
  QColor accent() const { return toQColor(MarrowTheme::accent); }
  QColor accent2() const { return toQColor(MarrowTheme::accent2); }
  QColor success() const { return toQColor(MarrowTheme::success); }
  QColor warning() const { return toQColor(MarrowTheme::warning); }
  QColor error() const { return toQColor(MarrowTheme::error); }
  QColor cyan() const { return toQColor(MarrowTheme::cyan); }
  QColor highlight() const { return toQColor(MarrowTheme::highlight); }
  QColor video() const { return toQColor(MarrowTheme::video); }
  QColor image() const { return toQColor(MarrowTheme::image); }
  QColor document() const { return toQColor(MarrowTheme::document); }
  QColor developer() const { return toQColor(MarrowTheme::developer); }
  QColor archive() const { return toQColor(MarrowTheme::archive); }
  QColor other() const { return toQColor(MarrowTheme::other); }
  QList<QColor> folderPalette() const;
  QColor accentDeep() const { return QColor(0x00, 0x56, 0xB3); }
  QString uiFamily() const { return uiFamily_; }
  QString monoFamily() const { return monoFamily_; }
  QString roundedFamily() const { return roundedFamily_; }

 private:
  QString uiFamily_;
  QString monoFamily_;
  QString roundedFamily_;
};

}  // namespace tessaly
