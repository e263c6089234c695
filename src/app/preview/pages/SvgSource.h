// Makes an SVG document safe to draw: without images from other files, pipes or the network, and
// without nesting deeper than can be drawn.
//
// Pure, safe from any thread.
#pragma once

#include <optional>

#include <QByteArray>

namespace tessaly::SvgSource {

// Absent if it is not well-formed XML, or nested too deep.
std::optional<QByteArray> harmless(const QByteArray& document);

}  // namespace tessaly::SvgSource
