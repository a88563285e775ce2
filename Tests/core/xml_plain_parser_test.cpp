// The fast reader and the general one never disagree.
#include "Core/xml_plain_parser.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <random>
#include <string>

namespace xml = vireonix::core::xml;
using xml::Mode;

namespace {

constexpr std::string_view kDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- before -->\n<main a='1' bb = "
    "\"&lt;x&amp;y>'\">"
    "\n\t<define Name='Fade'/><define />text &gt; \xE2\x84\x96 &quot;&apos;<![CDATA[<b>]]>"
    "<slide a_b='' c.d-e='\xC3\xA9'><!--in--><t>x</t ><t></t></slide>]]\n</main>\n<!-- after -->\n";

// A carriage return after the root changes nothing, but it is not plain.
xml::Tree parseGenerally(const std::string& document) {
  EXPECT_FALSE(xml::parsePlain(document + "\r"));
  return xml::parse(document + "\r", Mode::Strict);
}

constexpr std::array<std::string_view, 36> kPieces = {"<",
                                                      ">",
                                                      "&",
                                                      "\"",
                                                      "'",
                                                      "/",
                                                      "=",
                                                      "-->",
                                                      "<!--",
                                                      "]]>",
                                                      "</",
                                                      "/>",
                                                      "<a>",
                                                      "</a>",
                                                      "<t/>",
                                                      " ",
                                                      "\n",
                                                      "\t",
                                                      "&amp;",
                                                      "&#65;",
                                                      "&e;",
                                                      "<?p i?>",
                                                      "\xC3\xA9",
                                                      "\xC3",
                                                      "--",
                                                      "a='",
                                                      " a='1' ",
                                                      "b=\"2\"",
                                                      "xml:id=''",
                                                      "<![CDATA[",
                                                      "\xEF\xBF\xBE",
                                                      "\xED\xA0\x80",
                                                      "\x01",
                                                      "\x7F",
                                                      "<x:y/>",
                                                      "<!DOCTYPE main>"};

// A document of the same kind with a few places removed, doubled, or replaced.
std::string mutated(std::string text, std::mt19937& random) {
  const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
  for (std::size_t changes = below(3); changes < 3; ++changes) {
    const std::size_t at = below(text.size());
    const std::size_t length = below(2) == 0 ? below(4) : below(40);
    switch (below(4)) {
    case 0:
      text.erase(at, length);
      break;
    case 1:
      text.insert(at, text.substr(below(text.size()), length));
      break;
    default:
      text.replace(at, below(3), kPieces.at(below(kPieces.size())));
    }
  }
  return text;
}

unsigned long rounds() {
  const char* wanted = std::getenv("VIREONIX_FUZZ_ROUNDS");
  return wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : 20'000;
}

} // namespace

TEST(XmlPlainParser, ReadsWhatDocumentsConsistOf) {
  const auto plain = xml::parsePlain(kDocument);
  ASSERT_TRUE(plain);
  const xml::Tree general = parseGenerally(std::string(kDocument));
  ASSERT_TRUE(general);
  EXPECT_EQ(*plain, *general);
  EXPECT_EQ(*plain->attribute("bb"), "<x&y>'");
}

TEST(XmlPlainParser, LeavesWhatItIsNotSureOfToTheGeneralParser) {
  for (const char* document : {"",
                               " ",
                               "text",
                               "<a",
                               "<a>",
                               "</a>",
                               "<a></b>",
                               "<a/><b/>",
                               "<a/>x",
                               "x<a/>",
                               "<a b='1' b='2'/>",
                               "<a b=1/>",
                               "<a b='1'c='2'/>",
                               "<a b='<'/>",
                               "<a b='\t'/>",
                               "<a b='&#65;'/>",
                               "<a>&e;</a>",
                               "<a>&#65;</a>",
                               "<a>\r</a>",
                               "<a>]]></a>",
                               "<a><!--a--b--></a>",
                               "<x:a/>",
                               "<?p i?><a/>",
                               "<!DOCTYPE a><a/>",
                               "\xEF\xBB\xBF<a/>",
                               " <?xml version='1.0'?><a/>",
                               "<?xml version='1.0' encoding='latin1'?><a/>",
                               "<?xml version='1.1'?><a/>",
                               "<?xml encoding='UTF-8'?><a/>",
                               "<a>\xC3</a>",
                               "<a>\xEF\xBF\xBF</a>",
                               "<\xC3\xA9/>"})
    EXPECT_FALSE(xml::parsePlain(document)) << document;
}

TEST(XmlPlainParser, LeavesDocumentsThatAreTooDeepToTheGeneralParser) {
  std::string start;
  std::string end;
  for (std::size_t depth = 0; depth < xml::kMaxDepth; ++depth) {
    start += "<a>";
    end += "</a>";
  }
  EXPECT_TRUE(xml::parsePlain(start + end));
  EXPECT_FALSE(xml::parsePlain(start + "<a/>" + end));
}

TEST(XmlPlainParser, AnswersWhatTheGeneralParserAnswersForAnythingLikeADocument) {
  std::mt19937 random(7); // the same documents in each run
  unsigned long read = 0;
  for (unsigned long round = 0; round < rounds(); ++round) {
    const std::string document = mutated(std::string(kDocument), random);
    const auto plain = xml::parsePlain(document);
    if (!plain)
      continue;
    ++read;
    for (const xml::Tree& general :
         {parseGenerally(document), xml::parse(document + "\r", Mode::Lenient)}) {
      ASSERT_TRUE(general) << document;
      ASSERT_EQ(*plain, *general) << document;
    }
  }
  EXPECT_GT(read, rounds() / 20);
}
