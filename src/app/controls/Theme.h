// The palette, the colours by their role and the font families for views: `Theme.accent`,
// `Theme.hairline`, `Theme.monoFamily`. All are constant. Views use no other colours; a fainter
// shade is Qt.alpha(Theme.accent, 0.18).
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
  // The end of the gradient of the emblem and of the scan's ring, which starts at the accent.
  Q_PROPERTY(QColor indigo MEMBER indigo_ CONSTANT)
  // Lines between areas, and between rows.
  Q_PROPERTY(QColor faintHairline MEMBER faintHairline_ CONSTANT)
  Q_PROPERTY(QColor hairline MEMBER hairline_ CONSTANT)
  Q_PROPERTY(QColor strongHairline MEMBER strongHairline_ CONSTANT)
  Q_PROPERTY(QColor separator MEMBER separator_ CONSTANT)
  // Outlines. "panel" is for menus, cards and questions; "float" for toasts and banners.
  Q_PROPERTY(QColor chipOutline MEMBER chipOutline_ CONSTANT)
  Q_PROPERTY(QColor controlOutline MEMBER controlOutline_ CONSTANT)
  Q_PROPERTY(QColor secondaryOutline MEMBER secondaryOutline_ CONSTANT)
  Q_PROPERTY(QColor primaryOutline MEMBER primaryOutline_ CONSTANT)
  Q_PROPERTY(QColor queueOutline MEMBER queueOutline_ CONSTANT)
  Q_PROPERTY(QColor floatOutline MEMBER floatOutline_ CONSTANT)
  Q_PROPERTY(QColor panelOutline MEMBER panelOutline_ CONSTANT)
  // Translucent fills.
  Q_PROPERTY(QColor faintFill MEMBER faintFill_ CONSTANT)
  Q_PROPERTY(QColor chipFill MEMBER chipFill_ CONSTANT)
  Q_PROPERTY(QColor softFill MEMBER softFill_ CONSTANT)
  Q_PROPERTY(QColor buttonFill MEMBER buttonFill_ CONSTANT)
  Q_PROPERTY(QColor badgeFill MEMBER badgeFill_ CONSTANT)
  Q_PROPERTY(QColor hoverFill MEMBER hoverFill_ CONSTANT)
  Q_PROPERTY(QColor keyCapFill MEMBER keyCapFill_ CONSTANT)
  Q_PROPERTY(QColor switchTrack MEMBER switchTrack_ CONSTANT)
  // Dim the window below an overlay; the deep one is for questions.
  Q_PROPERTY(QColor dim MEMBER dim_ CONSTANT)
  Q_PROPERTY(QColor deepDim MEMBER deepDim_ CONSTANT)
  // Shadows.
  Q_PROPERTY(QColor cardShadow MEMBER cardShadow_ CONSTANT)
  Q_PROPERTY(QColor queueShadow MEMBER queueShadow_ CONSTANT)
  Q_PROPERTY(QColor floatShadow MEMBER floatShadow_ CONSTANT)
  Q_PROPERTY(QColor panelShadow MEMBER panelShadow_ CONSTANT)
  // The window's buttons, their symbols and their outline.
  Q_PROPERTY(QColor windowClose MEMBER windowClose_ CONSTANT)
  Q_PROPERTY(QColor windowMinimise MEMBER windowMinimise_ CONSTANT)
  Q_PROPERTY(QColor windowZoom MEMBER windowZoom_ CONSTANT)
  Q_PROPERTY(QColor windowSymbol MEMBER windowSymbol_ CONSTANT)
  Q_PROPERTY(QColor windowOutline MEMBER windowOutline_ CONSTANT)
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
  static QColor white(float opacity) { return QColor::fromRgbF(1, 1, 1, opacity); }
  static QColor black(float opacity) { return QColor::fromRgbF(0, 0, 0, opacity); }

  const QColor indigo_ = QColor(0x58, 0x56, 0xD6);
  const QColor faintHairline_ = white(0.05F);
  const QColor hairline_ = white(0.06F);
  const QColor strongHairline_ = white(0.12F);
  const QColor separator_ = white(0.08F);
  const QColor chipOutline_ = white(0.06F);
  const QColor controlOutline_ = white(0.08F);
  const QColor secondaryOutline_ = white(0.09F);
  const QColor primaryOutline_ = white(0.18F);
  const QColor queueOutline_ = white(0.1F);
  const QColor floatOutline_ = white(0.12F);
  const QColor panelOutline_ = white(0.14F);
  const QColor faintFill_ = white(0.02F);
  const QColor chipFill_ = white(0.03F);
  const QColor softFill_ = white(0.04F);
  const QColor buttonFill_ = white(0.06F);
  const QColor badgeFill_ = white(0.06F);
  const QColor hoverFill_ = white(0.08F);
  const QColor keyCapFill_ = white(0.08F);
  const QColor switchTrack_ = white(0.14F);
  const QColor dim_ = black(0.35F);
  const QColor deepDim_ = black(0.5F);
  const QColor cardShadow_ = black(0.35F);
  const QColor queueShadow_ = black(0.45F);
  const QColor floatShadow_ = black(0.5F);
  const QColor panelShadow_ = black(0.6F);
  const QColor windowClose_ = QColor(0xFF, 0x5F, 0x57);
  const QColor windowMinimise_ = QColor(0xFE, 0xBC, 0x2E);
  const QColor windowZoom_ = QColor(0x28, 0xC8, 0x40);
  const QColor windowSymbol_ = black(0.65F);
  const QColor windowOutline_ = black(0.2F);
  QString uiFamily_;
  QString monoFamily_;
  QString roundedFamily_;
};

}  // namespace tessaly
