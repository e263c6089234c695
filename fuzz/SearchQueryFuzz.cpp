#include <string>
#include <vector>

#include "Target.h"
#include "platform/UnicodeText.h"
#include "platform/tools/NameMatch.h"
#include "platform/tools/Printable.h"
#include "platform/tools/SearchQuery.h"

namespace tessaly::fuzz {

namespace {

using tools::NameMatch;

void requireQuery(const std::string& text) {
  const tools::ReadQuery query = tools::queryFrom({"-onlyin", "/home", text});
  require(query.query.has_value() == query.problem.empty(), "there is a query or a problem");
  require(query.problem.find('\n') == std::string::npos && UnicodeText::isUtf8(query.problem),
          "a problem is one line of text");
  require(tools::queryFrom({"-onlyin", "/home", text, text}).isMisuse || text == "-name",
          "there is no other form");
}

// Looks for the first half in the second.
void requireMatch(std::string_view input) {
  const std::string_view text = input.substr(0, input.size() / 2);
  const std::string_view name = input.substr(text.size());
  const std::string folded = UnicodeText::foldedForSearch(text);
  require(UnicodeText::foldedForSearch(folded) == folded || !UnicodeText::isUtf8(text),
          "the form of a form is itself");
  require(!UnicodeText::isUtf8(text) || UnicodeText::isUtf8(folded), "a text stays one");
  if (folded.empty()) return;
  const NameMatch match(text);
  const std::size_t at = UnicodeText::foldedForSearch(name).find(folded);
  const NameMatch::Place expected = at == std::string::npos ? NameMatch::Place::nowhere
                                    : at == 0               ? NameMatch::Place::start
                                                            : NameMatch::Place::inside;
  require(match.in(name) == expected, "a match is one of the forms");
  require(match.in(text) == NameMatch::Place::start, "a text is in itself");
}

}  // namespace

void tryInput(std::string_view input) {
  requireQuery(std::string(input));
  requireMatch(input);
  const std::string shown = tools::printable(input, 100);
  require(UnicodeText::isUtf8(shown) && shown.find('\n') == std::string::npos,
          "what is printed is a line of text");
  require(shown.size() <= 403, "what is printed has a limit");
}

}  // namespace tessaly::fuzz
