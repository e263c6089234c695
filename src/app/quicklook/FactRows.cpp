#include "app/quicklook/FactRows.h"

#include <cmath>
#include <optional>
#include <string_view>

#include <QDateTime>
#include <QLocale>

#include "app/model/DisplayText.h"
#include "app/model/KindWord.h"
#include "scan/FileKindRules.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

QString fromAscii(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// Empty for a time after the last date that is shown, which a file system may well store.
QString timeText(double seconds, const QTimeZone& zone) {
  constexpr double furthest = 253402300800;  // the year 10000
  if (!(std::abs(seconds) < furthest)) return {};
  const auto time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds)), zone);
  return QLocale::c().toString(time, QStringLiteral("d MMMM yyyy, HH:mm"));
}

QString sizeText(std::int64_t size) {
  QString text = fromAscii(Format::bytes(size));
  if (size >= 1024) {
    QLocale english(QLocale::English, QLocale::UnitedStates);
    text += QStringLiteral(" (%1 bytes)").arg(english.toString(static_cast<qlonglong>(size)));
  }
  return text;
}

// The folder that the item at `path` is in.
std::string_view placeOf(std::string_view path) {
  const auto last = path.find_last_not_of('/');
  if (last == std::string_view::npos) return {};
  const auto slash = path.find_last_of('/', last);
  if (slash == std::string_view::npos) return {};
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace

std::vector<PreviewRow> factRows(const PreviewFacts& facts, const QTimeZone& zone) {
  std::vector<PreviewRow> rows;
  const auto add = [&rows](const char* name, const QString& value) {
    if (!value.isEmpty()) rows.push_back({{}, QString::fromLatin1(name), value});
  };
  add("Kind", fromAscii(KindWord::of(FileKindRules::classify(facts.name, facts.isDir))));
  if (!facts.isDir) add("Size", sizeText(facts.size));
  if (facts.created) add("Created", timeText(*facts.created, zone));
  if (facts.modified) add("Modified", timeText(*facts.modified, zone));
  add("Links to", displayText(facts.linkTarget));
  add("Where", displayText(placeOf(facts.path)));
  return rows;
}

}  // namespace tessaly
