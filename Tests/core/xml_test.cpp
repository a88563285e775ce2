#include "Core/xml.h"

#include "Core/utf8.h"
#include "Core/xml_tree_builder.h"

#include "support/sanitizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

using vireonix::test::rounds;
namespace xml = vireonix::core::xml;
using xml::Mode;
using xml::NodeKind;

namespace {

// A tree as a test states it: what the views of a node point into.
struct Stated {
  NodeKind kind = NodeKind::Element;
  std::string content;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<Stated> children;
};

Stated node(NodeKind kind, std::string content) {
  return {.kind = kind, .content = std::move(content), .attributes = {}, .children = {}};
}

Stated element(std::string name) {
  return node(NodeKind::Element, std::move(name));
}

Stated text(std::string characters) {
  return node(NodeKind::Text, std::move(characters));
}

Stated cdata(std::string characters) {
  return node(NodeKind::CData, std::move(characters));
}

Stated withChildren(std::string name, std::vector<Stated> children) {
  Stated made = element(std::move(name));
  made.children = std::move(children);
  return made;
}

void build(xml::TreeBuilder& builder, const Stated& stated) {
  if (stated.kind != NodeKind::Element)
    return builder.add(stated.kind, stated.content);
  builder.startElement(stated.content);
  for (const auto& [name, value] : stated.attributes)
    builder.attribute(name, value);
  for (const Stated& child : stated.children)
    build(builder, child);
  builder.endElement();
}

xml::Tree tree(const Stated& stated) {
  xml::TreeBuilder builder;
  build(builder, stated);
  return builder.take();
}

std::string written(const Stated& stated) {
  return xml::write(*tree(stated));
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string out;
  for (std::size_t i = 0; i < times; ++i)
    out += text;
  return out;
}

// The string value of the root after a parse, or a mark for "nothing".
std::string valueOf(const std::string& document, Mode mode = Mode::Strict) {
  const auto root = xml::parse(document, mode);
  return root ? root->stringValue() : "(nothing)";
}

std::string utf16(std::u16string_view text, bool bigEndian) {
  std::string out;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    out += bigEndian ? high : low;
    out += bigEndian ? low : high;
  }
  return out;
}

} // namespace

TEST(XmlParse, KeepsEveryKindOfNodeInOrder) {
  const auto root =
      xml::parse("<a> <!--note--><b/>x&amp;y<![CDATA[<z>]]><?do it?></a>", Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_EQ(*root, *tree(withChildren("a", {text(" "), node(NodeKind::Comment, "note"),
                                            element("b"), text("x&y"), cdata("<z>"),
                                            node(NodeKind::ProcessingInstruction, "do it")})));
  EXPECT_EQ(root->stringValue(), " x&y<z>");
}

TEST(XmlParse, KeepsAttributesAndNamespaceDeclarationsInTheirOrder) {
  const auto root =
      xml::parse(R"(<p:m z="1" xmlns:p="urn:p" a="&lt;&#10;" p:b=""/>)", Mode::Strict);
  ASSERT_TRUE(root);
  const std::vector<xml::Attribute> expected = {
      {"z", "1"}, {"xmlns:p", "urn:p"}, {"a", "<\n"}, {"p:b", ""}};
  EXPECT_EQ(root->content, "p:m");
  EXPECT_TRUE(std::ranges::equal(root->attributes, expected));
  EXPECT_EQ(root->attribute("c"), nullptr);
}

TEST(XmlParse, KeepsAdjacentSectionsApartAndJoinsOneStretchOfText) {
  const auto root = xml::parse("<a><![CDATA[1]]><![CDATA[2]]>3&#52;&gt;5</a>", Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_EQ(*root, *tree(withChildren("a", {cdata("1"), cdata("2"), text("34>5")})));
}

TEST(XmlParse, LeavesOutWhatStandsBesideTheRoot) {
  const auto root = xml::parse("\xEF\xBB\xBF<?xml version='1.0'?>\n<!--a--><?b?><!DOCTYPE r "
                               "[<!ELEMENT r ANY>]><r/><!--c-->\n",
                               Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_EQ(*root, *tree(element("r")));
}

TEST(XmlParse, ReadsEveryEncodingThatIsDeclaredOrMarked) {
  const std::string expected = "\xC3\xA4\xE2\x82\xAC";
  const std::u16string inner = u"<a>\u00E4\u20AC</a>";
  EXPECT_EQ(valueOf("<a>" + expected + "</a>"), expected);
  EXPECT_EQ(valueOf("\xEF\xBB\xBF<a>" + expected + "</a>"), expected);
  EXPECT_EQ(valueOf(utf16(u"\uFEFF" + inner, false)), expected);
  EXPECT_EQ(valueOf(utf16(u"\uFEFF" + inner, true)), expected);
  EXPECT_EQ(valueOf(utf16(u"<?xml version='1.0' encoding='UTF-16LE'?>" + inner, false)), expected);
  EXPECT_EQ(valueOf("<?xml version='1.0' encoding='windows-1252'?><a>\xE4\x80</a>"), expected);
  EXPECT_EQ(valueOf("<?xml version='1.0' encoding='iso-8859-15'?><a>\xE4\xA4</a>"), expected);
  EXPECT_EQ(valueOf("<?xml version='1.0' encoding='shift_jis'?><a>\x93\xFA</a>"), "\xE6\x97\xA5");
}

TEST(XmlParse, StrictRefusesWhatIsNotWellFormed) {
  for (const char* document :
       {"<a>", "<a><b></a>", "<a></a><b/>", "<a b=1/>", "<a b='1' b='2'/>", "<a>&</a>",
        "<a>&x;</a>", "<a><</a>", "text", "<a/>text", "<a>\x01</a>", "<a>\xFF</a>", "<a b='<'/>",
        "<a>]]></a>", "<a><!-- -- --></a>", "<?xml version='1.0' encoding='no-such'?><a>\xE4</a>"})
    EXPECT_FALSE(xml::parse(document, Mode::Strict)) << document;
}

TEST(XmlParse, LenientRepairsWhatItCan) {
  struct Case {
    const char* document;
    const char* repaired;
  };
  const Case cases[] = {
      {"<a><b>x", "<a><b>x</b></a>"},
      {"<a><b>x</a>", "<a><b>x</b></a>"},
      {"<a>1 & 2</a>", "<a>1  2</a>"},
      {"<a>x</a><b/>", "<a>x</a>"},
      {"<a b='1' b='2'>x</a>", "<a b=\"1\">x</a>"},
      {"<a>x&nosuch;y</a>", "<a>xy</a>"},
  };
  for (const Case& each : cases) {
    const auto root = xml::parse(each.document, Mode::Lenient);
    ASSERT_TRUE(root) << each.document;
    EXPECT_EQ(xml::write(*root), each.repaired) << each.document;
  }
}

TEST(XmlParse, LenientKeepsTheTextAroundInvalidBytesWellFormed) {
  const auto root = xml::parse("<a b='\xFFq'>one\xFF two</a>", Mode::Lenient);
  ASSERT_TRUE(root);
  EXPECT_TRUE(vireonix::core::isWellFormedUtf8(xml::write(*root)));
  EXPECT_NE(root->stringValue().find("one"), std::string::npos);
}

TEST(XmlParse, WhatIsNotXmlGivesNothingEvenLeniently) {
  for (const std::string& document :
       {std::string(), std::string(" \n"), std::string("plain text"),
        std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), std::string(1000, '\0'),
        std::string("{\"a\": 1}"), std::string("\xFF\xD8\xFF\xE0"), std::string("<"),
        std::string("<!--only a comment-->"), std::string("\xFE\xFF"),
        std::string("<!DOCTYPE a [")})
    EXPECT_FALSE(xml::parse(document, Mode::Lenient)) << document;
}

TEST(XmlParse, DepthIsBounded) {
  auto nested = [](std::size_t depth) { return repeated("<a>", depth) + repeated("</a>", depth); };
  EXPECT_TRUE(xml::parse(nested(xml::kMaxDepth), Mode::Strict));
  for (const Mode mode : {Mode::Strict, Mode::Lenient}) {
    EXPECT_FALSE(xml::parse(nested(xml::kMaxDepth + 1), mode));
    EXPECT_FALSE(xml::parse(nested(1'000'000), mode));
    EXPECT_FALSE(xml::parse(repeated("<a>", 1'000'000), mode));
  }
}

TEST(XmlParse, ALongTextIsRead) {
  const std::string caption(20'000'000, 'x');
  const auto root = xml::parse(
      "<a b='" + caption + "'><![CDATA[" + caption + "]]>" + caption + "</a>", Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_EQ(root->stringValue().size(), 2 * caption.size());
  EXPECT_EQ(root->attribute("b")->size(), caption.size());
}

TEST(XmlParse, DeclaredEntitiesAreNeverExpanded) {
  std::string bomb = "<!DOCTYPE a [<!ENTITY e0 'boom'>";
  for (int i = 1; i < 30; ++i) {
    const std::string inner = "&e" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY e" + std::to_string(i) + " '" + repeated(inner, 10) + "'>";
  }
  bomb += "]><a b='&e29;'>x&e29;y</a>";
  EXPECT_FALSE(xml::parse(bomb, Mode::Strict));
  const auto root = xml::parse(bomb, Mode::Lenient);
  ASSERT_TRUE(root);
  EXPECT_EQ(root->stringValue(), "xy");
  EXPECT_EQ(*root->attribute("b"), "");
}

TEST(XmlParse, ParameterEntitiesAreNeverExpanded) {
  const std::string document = "<!DOCTYPE a [<!ENTITY % p '<!ENTITY q \"boom\">'>%p;]><a>x&q;y</a>";
  EXPECT_EQ(valueOf(document, Mode::Lenient), "xy");
}

TEST(XmlParse, ExternalEntitiesAndSubsetsAreNeverRead) {
  const std::string entity = "<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a>x&x;y</a>";
  EXPECT_EQ(valueOf(entity, Mode::Lenient), "xy");
  const std::string subset = "<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/a.dtd'><a>xy</a>";
  EXPECT_EQ(valueOf(subset), "xy");
}

TEST(XmlParse, DefaultAttributesOfAnInternalSubsetAreNotAdded) {
  const auto root = xml::parse("<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>", Mode::Strict);
  ASSERT_TRUE(root);
  EXPECT_TRUE(root->attributes.empty());
}

TEST(XmlNode, FindsChildElementsAmongOtherNodes) {
  const xml::Tree root = tree(withChildren("a", {text(" "), element("b"), element("c")}));
  EXPECT_EQ(root->firstElement(), &root->children[1]);
  EXPECT_EQ(root->firstElement("c"), &root->children[2]);
  EXPECT_EQ(root->firstElement("d"), nullptr);
  EXPECT_EQ(root->children[1].firstElement(), nullptr);
}

TEST(XmlWrite, EscapesWhereItMustAndNowhereElse) {
  Stated root = withChildren("a", {text("<&>\"'\t\n\r"), cdata("<&>\"'\t\n")});
  root.attributes = {{"b", "<&>\"'\t\n\r"}};
  EXPECT_EQ(written(root), "<a b=\"&lt;&amp;>&quot;'&#9;&#10;&#13;\">"
                           "&lt;&amp;&gt;\"'\t\n&#13;<![CDATA[<&>\"'\t\n]]></a>");
}

TEST(XmlWrite, DividesTheEndMarkOfASection) {
  EXPECT_EQ(written(cdata("a]]>b]]>")), "<![CDATA[a]]]]><![CDATA[>b]]]]><![CDATA[>]]>");
  EXPECT_EQ(written(cdata("]]\x01>")), "<![CDATA[]]]]><![CDATA[>]]>");
  EXPECT_EQ(written(cdata("")), "<![CDATA[]]>");
  EXPECT_EQ(written(cdata("]")), "<![CDATA[]]]>");
}

TEST(XmlWrite, DropsWhatXmlCannotCarryAndReplacesBadBytes) {
  const std::string bad = std::string("a\0b\x01\x1F", 5) + "\xEF\xBF\xBE\xEF\xBF\xBF" + "c\xFF";
  EXPECT_EQ(written(text(bad)), "abc\xEF\xBF\xBD");
  EXPECT_EQ(written(cdata(bad)), "<![CDATA[abc\xEF\xBF\xBD]]>");
  EXPECT_EQ(written(text("\x7F\xC2\x85\xEF\xBF\xBD")), "\x7F\xC2\x85\xEF\xBF\xBD");
}

TEST(XmlWrite, WritesLineEndsOfASectionAsTheyWillBeRead) {
  EXPECT_EQ(written(cdata("a\r\nb\rc\n\rd")), "<![CDATA[a\nb\nc\n\nd]]>");
}

TEST(XmlWrite, KeepsAProcessingInstructionReadable) {
  for (const char* instruction : {"a ?>", "a ?>?>", "a ?\x01>", "a ?\xEF\xBF\xBE>", "a ??"}) {
    const std::string markup =
        "<a>" + written(node(NodeKind::ProcessingInstruction, instruction)) + "</a>";
    const auto root = xml::parse(markup, Mode::Strict);
    ASSERT_TRUE(root) << markup;
    EXPECT_EQ(root->children.size(), 1U) << markup;
    EXPECT_EQ(xml::write(*root), markup);
  }
}

TEST(XmlWrite, KeepsACommentReadable) {
  for (const char* comment : {"--", "a--b---", "-", "x->"}) {
    const std::string markup = "<a>" + written(node(NodeKind::Comment, comment)) + "</a>";
    EXPECT_TRUE(xml::parse(markup, Mode::Strict)) << markup;
  }
}

TEST(XmlWrite, TheDeclarationNamesTheEncoding) {
  xml::Writer writer;
  writer.declaration();
  writer.node(*tree(element("a")));
  EXPECT_EQ(writer.take(), R"(<?xml version="1.0" encoding="utf-8"?><a/>)");
  EXPECT_EQ(writer.take(), "");
}

namespace {

// Trees as a parser makes them: text nodes are never empty or adjacent.
class RandomTree {
public:
  explicit RandomTree(unsigned seed) : random_(seed) {}

  Stated make(int depth = 0) {
    Stated made = element(name());
    for (unsigned i = pick(4); i > 0; --i)
      made.attributes.emplace_back("a" + std::to_string(i), characters(true));
    for (unsigned i = depth < 6 ? pick(5) : 0; i > 0; --i)
      addChild(made, depth);
    return made;
  }

private:
  unsigned pick(unsigned below) { return static_cast<unsigned>(random_()) % below; }

  std::string name() { return std::string(1, static_cast<char>('a' + pick(26))); }

  std::string characters(bool carriageReturns) {
    static const std::string kPieces[] = {"a",
                                          "]]>",
                                          "]",
                                          "&",
                                          "<",
                                          ">",
                                          "\"",
                                          "'",
                                          " ",
                                          "\n",
                                          "\t",
                                          "\xC3\xA4",
                                          "\xF0\x9F\x98\x80",
                                          "\xE2\x80\x8F",
                                          "&amp;",
                                          "\xED\x9F\xBF",
                                          "\xC2\x80",
                                          "\r"};
    std::string out;
    for (unsigned i = pick(8); i > 0; --i)
      out += kPieces[pick(carriageReturns ? 18 : 17)];
    return out;
  }

  void addChild(Stated& parent, int depth) {
    switch (pick(4)) {
    case 0:
      parent.children.push_back(cdata("c" + std::to_string(pick(100))));
      return;
    case 1:
      if (parent.children.empty() || parent.children.back().kind != NodeKind::Text)
        parent.children.push_back(text("t" + characters(true)));
      return;
    case 2:
      parent.children.push_back(node(NodeKind::ProcessingInstruction, "p " + name()));
      return;
    default:
      parent.children.push_back(make(depth + 1));
    }
  }

  std::mt19937 random_;
};

} // namespace

TEST(XmlRoundTrip, WhatWasWrittenIsReadBackAsTheSameTree) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const xml::Tree made = tree(RandomTree(seed).make());
    const std::string markup = xml::write(*made);
    const auto back = xml::parse(markup, Mode::Strict);
    ASSERT_TRUE(back) << markup;
    ASSERT_EQ(*back, *made) << markup;
    ASSERT_EQ(xml::write(*back), markup);
  }
}

TEST(XmlRoundTrip, AnyBytesInAnyPlaceStayReadableAndSettleAtOnce) {
  std::mt19937 random(7);
  for (int round = 0; round < rounds(2000); ++round) {
    std::string bytes;
    for (auto i = random() % 40; i > 0; --i)
      bytes += random() % 3 == 0 ? ']' : static_cast<char>(random());
    Stated root =
        withChildren("a", {cdata(bytes), node(NodeKind::Comment, bytes), text("t" + bytes)});
    root.attributes = {{"b", bytes}};
    const std::string markup = written(root);
    const auto back = xml::parse(markup, Mode::Strict);
    ASSERT_TRUE(back) << markup;
    ASSERT_EQ(xml::write(*back), markup);
  }
}
