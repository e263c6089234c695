// The font families of the program's text: for each voice the first installed one of a short list,
// so that a machine without the preferred font still has a similar one.
//
// Main thread only, after a QGuiApplication is created.
#pragma once

#include <QString>
#include <QStringList>

namespace tessaly::Fonts {

enum class Voice { ui, mono, rounded };

// The families for a voice, in order of preference.
QStringList candidates(Voice voice);

// The first of `wanted` that is in `installed`, ignoring case; empty if there is none.
QString choose(const QStringList& wanted, const QStringList& installed);

// The family for a voice on this machine. Never empty: without an installed candidate it is the
// platform's general or fixed font.
QString family(Voice voice);

// Makes the ui family the application's font, and gives all voices the same fallbacks, so that
// Arabic, Chinese and emoji names have the same fonts everywhere.
void install();

}  // namespace tessaly::Fonts
