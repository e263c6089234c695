// An SVG document made harmless to draw: without pictures that would be fetched from elsewhere, any
// file or pipe among them, and not nested deeper than can be drawn.
//
// Pure, safe from any thread.
#pragma once

#include <optional>

#include <QByteArray>

namespace tessaly::SvgSource {

// None for what is not well-formed XML, or nested too deep.
std::optional<QByteArray> harmless(const QByteArray& document);

}  // namespace tessaly::SvgSource
