#include "app/quicklook/PreviewSheet.h"

#include <string_view>
#include <utility>

#include <QMimeDatabase>

#include "app/model/DisplayText.h"
#include "app/model/KindSymbol.h"
#include "app/quicklook/FactRows.h"
#include "scan/FileKindRules.h"
#include "scan/Format.h"
#include "scan/PathName.h"

namespace tessaly {

namespace {

using Kind = PreviewScreen::Kind;

QString fromAscii(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString symbolOf(const std::string& name, bool isDir) {
  return fromAscii(KindSymbol::of(isDir ? FileKind::folder : FileKindRules::classify(name, isDir)));
}

// The symbols of kinds include film but no sound, so the type is looked up by the name.
QString mediaSymbolOf(const std::string& name) {
  const QString type =
      QMimeDatabase().mimeTypeForFile(displayText(name), QMimeDatabase::MatchExtension).name();
  return type.startsWith(QLatin1String("audio/")) ? QStringLiteral("music.note")
                                                  : QStringLiteral("film");
}

QString counted(std::int64_t count, std::string_view noun) {
  return fromAscii(Format::counted(static_cast<std::size_t>(count), noun));
}

// "12 pages", and how many of them are shown unless all are.
QString countedNotice(std::int64_t count, std::size_t shown, std::string_view noun) {
  QString text = counted(count, noun);
  if (std::cmp_less(shown, count)) text += QStringLiteral(", only the first %1 shown").arg(shown);
  return text;
}

QString pixelsText(const QSize& pixels) {
  return QStringLiteral("%1 × %2 pixels").arg(pixels.width()).arg(pixels.height());
}

// Sets the fields for one kind of content.
struct BodyWriter {
  PreviewSheet& sheet;
  const PreviewFacts& facts;
  const QTimeZone& zone;

  void operator()(FactsOnly&) {
    sheet.body = Kind::Facts;
    sheet.headline = sheet.name;
    sheet.headlineSymbol = sheet.symbol;
    sheet.rows = factRows(facts, zone);
    sheet.description = QStringLiteral("Details of ") + sheet.name;
  }

  void operator()(ImagePreview& image) {
    sheet.body = Kind::Image;
    sheet.pictures.push_back(std::move(image.image));
    sheet.notice = pixelsText(image.pixels);
    sheet.description = QStringLiteral("Image, ") + sheet.notice;
  }

  void operator()(TextPreview& text) {
    sheet.body = Kind::Text;
    sheet.lines = TextLines(text.text);
    if (!text.isWhole)
      sheet.notice = QStringLiteral("Only the beginning of the file is shown");
    else if (text.text.isEmpty())
      sheet.notice = QStringLiteral("The file is empty");
    sheet.description = QStringLiteral("Text of ") + sheet.name;
  }

  void operator()(PagesPreview& pages) {
    sheet.body = Kind::Pages;
    sheet.notice = countedNotice(pages.count, pages.pages.size(), "page");
    sheet.pictures = std::move(pages.pages);
    sheet.description = QStringLiteral("Document, ") + sheet.notice;
  }

  void operator()(MediaPreview& media) {
    sheet.body = Kind::Media;
    sheet.symbol = mediaSymbolOf(facts.name);
    sheet.headline = sheet.name;
    sheet.headlineSymbol = sheet.symbol;
    for (auto& [name, value] : media.facts)
      sheet.rows.push_back({{}, std::move(name), std::move(value)});
    for (PreviewRow& row : factRows(facts, zone)) sheet.rows.push_back(std::move(row));
    sheet.description = QStringLiteral("Details of ") + sheet.name;
  }

  void operator()(FolderPreview& folder) {
    sheet.body = Kind::Folder;
    for (const FolderPreview::Item& item : folder.items)
      sheet.rows.push_back({symbolOf(item.name, item.isDir), displayText(item.name),
                            item.isDir ? QString() : fromAscii(Format::bytes(item.size))});
    sheet.notice = countedNotice(folder.count, folder.items.size(), "item");
    sheet.description = QStringLiteral("Folder, ") + sheet.notice;
  }

  void operator()(PreviewFailure& failure) {
    sheet.body = Kind::Failure;
    sheet.headline = failure.reason;
    sheet.headlineSymbol = QStringLiteral("exclamationmark.triangle.fill");
    sheet.rows = factRows(facts, zone);
    sheet.description = failure.reason;
  }
};

}  // namespace

PreviewSheet PreviewSheet::loading(const std::string& path) {
  PreviewSheet sheet;
  sheet.body = Kind::Loading;
  sheet.name = displayText(lastPathComponent(path));
  sheet.description = QStringLiteral("Loading ") + sheet.name;
  return sheet;
}

PreviewSheet PreviewSheet::of(PreviewContent content, const QTimeZone& zone) {
  PreviewSheet sheet;
  sheet.name = displayText(content.facts.name);
  sheet.symbol = symbolOf(content.facts.name, content.facts.isDir);
  if (!content.facts.isDir) sheet.size = fromAscii(Format::bytes(content.facts.size));
  std::visit(BodyWriter{sheet, content.facts, zone}, content.body);
  return sheet;
}

}  // namespace tessaly
