#include "app/preview/pages/SvgSource.h"

#include <algorithm>

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace tessaly::SvgSource {

namespace {

// Drawing recurses once per level.
constexpr int deepest = 256;

QStringView localPart(QStringView name) {
  return name.mid(name.lastIndexOf(u':') + 1);
}

bool isFromElsewhere(const QXmlStreamReader& reader) {
  if (localPart(reader.qualifiedName()) != u"image") return false;
  const QXmlStreamAttributes attributes = reader.attributes();
  return std::any_of(attributes.begin(), attributes.end(),
                     [](const QXmlStreamAttribute& attribute) {
                       return localPart(attribute.qualifiedName()) == u"href" &&
                              !attribute.value().trimmed().startsWith(u"data:");
                     });
}

}  // namespace

// Names are copied literally, with their prefixes.
std::optional<QByteArray> harmless(const QByteArray& document) {
  QXmlStreamReader reader(document);
  reader.setNamespaceProcessing(false);
  QByteArray result;
  QXmlStreamWriter writer(&result);
  int depth = 0;
  while (!reader.atEnd()) {
    switch (reader.readNext()) {
      case QXmlStreamReader::StartElement:
        if (isFromElsewhere(reader)) {
          reader.skipCurrentElement();
          break;
        }
        if (++depth > deepest) return std::nullopt;
        writer.writeStartElement(reader.qualifiedName().toString());
        for (const QXmlStreamAttribute& attribute : reader.attributes()) {
          writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
        }
        break;
      case QXmlStreamReader::EndElement:
        --depth;
        writer.writeEndElement();
        break;
      case QXmlStreamReader::Characters:
        writer.writeCharacters(reader.text().toString());
        break;
      default:
        break;
    }
  }
  if (reader.hasError()) return std::nullopt;
  return result;
}

}  // namespace tessaly::SvgSource
