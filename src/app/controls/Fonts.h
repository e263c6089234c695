// The families the program's text is set in: the first installed of a short list for each voice,
// so that a machine without our first choice still gets a face of the same kind.
//
// Main thread only, and only once a QGuiApplication stands.
#pragma once

#include <QString>
#include <QStringList>

namespace tessaly::Fonts {

enum class Voice { ui, mono, rounded };

// The families to try for a voice, the preferred one first.
QStringList candidates(Voice voice);

// The first of `wanted` that `installed` holds, whatever the case of its letters; empty when none.
QString choose(const QStringList& wanted, const QStringList& installed);

// The family for a voice on this machine. Never empty: when no candidate is installed it is the
// platform's own general or fixed font.
QString family(Voice voice);

// Makes the ui family the application's font, and gives all voices the same fallbacks, so that
// Arabic, Chinese and emoji names come from the same faces wherever they are shown.
void install();

}  // namespace tessaly::Fonts
