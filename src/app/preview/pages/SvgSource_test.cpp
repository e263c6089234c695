#include "app/preview/pages/SvgSource.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

std::string harmless(const std::string& document) {
  const auto result = SvgSource::harmless(QByteArray::fromStdString(document));
  return result ? result->toStdString() : "none";
}

TEST(SvgSource, drawn_elements_are_kept) {
  EXPECT_EQ(harmless("<?xml version='1.0'?><!-- x --><svg xmlns:a=\"b\"><a:g c=\"&lt;&quot;\">"
                     "t &amp; u<![CDATA[<v>]]></a:g><path d=\"M0 0\"/></svg>"),
            "<svg xmlns:a=\"b\"><a:g c=\"&lt;&quot;\">t &amp; u&lt;v&gt;</a:g>"
            "<path d=\"M0 0\"/></svg>");
}

TEST(SvgSource, entities_declared_in_the_document_are_kept) {
  EXPECT_EQ(harmless("<!DOCTYPE svg [<!ENTITY red \"#f00\">]><svg fill=\"&red;\"/>"),
            "<svg fill=\"#f00\"/>");
}

TEST(SvgSource, images_from_elsewhere_are_dropped) {
  for (const char* place :
       {"/dev/tty", "file:///pipe", "http://localhost/", "relative.png", " /x", "data/../pipe"}) {
    const std::string image =
        "<image xlink:href=\"" + std::string(place) + "\"><title>T</title></image>";
    EXPECT_EQ(harmless("<svg>" + image + "<g>" + image + "</g></svg>"), "<svg><g/></svg>") << place;
  }
  EXPECT_EQ(harmless("<svg><svg:image href=\"/x\"/></svg>"), "<svg/>");
}

TEST(SvgSource, embedded_images_and_references_to_own_parts_are_kept) {
  const std::string document =
      "<svg><image xlink:href=\"data:image/png;base64,AA==\"/><use href=\"#a\"/></svg>";
  EXPECT_EQ(harmless(document), document);
}

TEST(SvgSource, malformed_documents_are_refused) {
  EXPECT_EQ(harmless("<svg><g></svg>"), "none");
  EXPECT_EQ(harmless("<svg>"), "none");
  EXPECT_EQ(harmless("<svg>&unknown;</svg>"), "none");
  EXPECT_EQ(harmless(""), "none");
}

TEST(SvgSource, documents_nested_too_deep_are_refused) {
  const auto nested = [](int depth) {
    std::string open;
    std::string close;
    for (int i = 0; i < depth; ++i) {
      open += "<g>";
      close += "</g>";
    }
    return open + "t" + close;
  };
  EXPECT_EQ(harmless(nested(256)), nested(256));
  EXPECT_EQ(harmless(nested(257)), "none");
  EXPECT_EQ(harmless(nested(100'000)), "none");
}

}  // namespace
}  // namespace tessaly
