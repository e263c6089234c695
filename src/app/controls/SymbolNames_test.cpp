// Every name of a symbol in the program has a drawing.
#include <gtest/gtest.h>
#include <map>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include "app/controls/SymbolPainter.h"
#include "treemap/BloatFilter.h"

namespace tessaly {
namespace {

// Names, and a file in which each was found.
using Uses = std::map<QString, QString>;

// Collects the quoted names in a piece of source, without other texts.
void collect(const QString& source, const QString& file, Uses& uses) {
  static const QRegularExpression quoted("\"([a-z0-9]+(?:\\.[a-z0-9]+)*)\"");
  auto names = quoted.globalMatch(source);
  while (names.hasNext()) uses.emplace(names.next().captured(1), file);
}

// In views: the values of properties named symbol or ...Symbol, and the names of Symbols.
void collectFromQml(const QString& text, const QString& file, Uses& uses) {
  static const QRegularExpression bound(
      "\\b(?:symbol|\\w+Symbol)\\s*:([^\\n;]*(?:\\n\\s*[?:][^\\n;]*)*)");
  auto bindings = bound.globalMatch(text);
  while (bindings.hasNext()) collect(bindings.next().captured(1), file, uses);
  static const QRegularExpression item("\\bSymbol\\s*\\{([^{}]*)");
  static const QRegularExpression named("\\bname\\s*:([^\\n;]*(?:\\n\\s*[?:][^\\n;]*)*)");
  auto items = item.globalMatch(text);
  while (items.hasNext()) {
    auto names = named.globalMatch(items.next().captured(1));
    while (names.hasNext()) collect(names.next().captured(1), file, uses);
  }
}

// In C++: the results of functions whose names contain "symbol", and the arguments of the painter.
void collectFromCpp(const QString& text, const QString& file, Uses& uses) {
  static const QRegularExpression function("\\w*[sS]ymbol\\w*\\([^;{}]*\\)[^;{}()]*\\{(.*?)\\n\\}",
                                           QRegularExpression::DotMatchesEverythingOption);
  auto functions = function.globalMatch(text);
  while (functions.hasNext()) {
    static const QRegularExpression returned("return[^;]*;");
    auto returns = returned.globalMatch(functions.next().captured(1));
    while (returns.hasNext()) collect(returns.next().captured(), file, uses);
  }
  static const QRegularExpression painted("SymbolPainter::(?:image|pixmap)\\(([^,;]*)");
  auto calls = painted.globalMatch(text);
  while (calls.hasNext()) collect(calls.next().captured(1), file, uses);
}

Uses usesInSources() {
  Uses uses;
  QDirIterator files(QStringLiteral(TESSALY_SOURCE_FOLDER), {"*.qml", "*.cpp", "*.h"}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    const QString name = files.fileName();
    if (name.contains("_test") || !file.open(QIODevice::ReadOnly)) continue;
    const QString text = QString::fromUtf8(file.readAll());
    if (name.endsWith(".qml")) {
      collectFromQml(text, name, uses);
    } else {
      collectFromCpp(text, name, uses);
    }
  }
  return uses;
}

TEST(SymbolNames, symbol_names_in_every_source_have_a_drawing) {
  const Uses uses = usesInSources();
  EXPECT_GE(uses.size(), 5U) << "the search misses most uses";
  for (const auto& [name, file] : uses) {
    EXPECT_TRUE(SymbolPainter::exists(name)) << name.toStdString() << " in " << file.toStdString();
  }
}

TEST(SymbolNames, symbol_names_of_every_bloat_filter_have_a_drawing) {
  for (const BloatFilter& filter : BloatFilter::catalog()) {
    EXPECT_TRUE(SymbolPainter::exists(QString::fromStdString(filter.symbol))) << filter.symbol;
  }
}

TEST(SymbolNames, symbol_names_are_found_in_every_form_of_source) {
  Uses uses;
  collectFromQml(
      "Symbol {\n  size: 3\n  name: a ? \"one.fill\" : \"two\"\n}\n"
      "MarrowPill { symbol: b\n      ? \"three\" : \"four.2x2\"; text: \"five\" }\n",
      "A.qml", uses);
  collectFromCpp(
      "QString symbolFor(Kind kind) {\n  if (kind == a) return \"six\";\n  return "
      "\"seven.text\";\n}\n"
      "auto x = SymbolPainter::image(\"eight\", 3);\nauto y = other(\"nine\");\n",
      "A.cpp", uses);
  QStringList names;
  for (const auto& use : uses) names.append(use.first);
  EXPECT_EQ(names.join(" ").toStdString(), "eight four.2x2 one.fill seven.text six three two");
}

}  // namespace
}  // namespace tessaly
