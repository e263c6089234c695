#include "app/controls/Theme.h"

namespace tessaly {

Theme::Theme(QObject* parent)
    : QObject(parent),
      uiFamily_(Fonts::family(Fonts::Voice::ui)),
      monoFamily_(Fonts::family(Fonts::Voice::mono)),
      roundedFamily_(Fonts::family(Fonts::Voice::rounded)) {}

QList<QColor> Theme::folderPalette() const {
  QList<QColor> colors;
  for (const Color& color : MarrowTheme::folderPalette) colors.append(toQColor(color));
  return colors;
}

}  // namespace tessaly
