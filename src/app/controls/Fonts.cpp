#include "app/controls/Fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

namespace tessaly::Fonts {

namespace {

QStringList fallbacks() {
  return {"Noto Sans", "Noto Sans Arabic", "Noto Sans CJK SC", "Noto Color Emoji"};
}

QString systemFamily(Voice voice) {
  const auto system = voice == Voice::mono ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont;
  return QFontDatabase::systemFont(system).family();
}

}  // namespace

QStringList candidates(Voice voice) {
  switch (voice) {
    case Voice::mono:
      return {"SF Mono", "JetBrains Mono", "Noto Sans Mono", "DejaVu Sans Mono"};
    case Voice::rounded:
      return {"SF Pro Rounded", "Nunito", "Quicksand", "Inter", "Noto Sans", "DejaVu Sans"};
    case Voice::ui:
      break;
  }
  return {"SF Pro Text", "Inter", "Noto Sans", "DejaVu Sans"};
}

QString choose(const QStringList& wanted, const QStringList& installed) {
  for (const QString& name : wanted) {
    for (const QString& family : installed) {
      if (family.compare(name, Qt::CaseInsensitive) == 0) return family;
    }
  }
  return {};
}

QString family(Voice voice) {
  const QString chosen = choose(candidates(voice), QFontDatabase::families());
  return chosen.isEmpty() ? systemFamily(voice) : chosen;
}

void install() {
  for (const Voice voice : {Voice::ui, Voice::mono, Voice::rounded}) {
    const QString name = family(voice);
    QFont::removeSubstitutions(name);
    QFont::insertSubstitutions(name, fallbacks());
  }
  QFont font(family(Voice::ui));
  font.setPixelSize(13);
  QGuiApplication::setFont(font);
}

}  // namespace tessaly::Fonts
