#include "nib_localizer/xib_document.h"

#include "nib_localizer/pseudo_locale.h"
#include "nib_localizer/utf8.h"

#include <gtest/gtest.h>

using vireonix::nibs::pseudoTranslation;
using vireonix::nibs::XibDocument;

namespace {

std::string xib(const std::string& objects) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<document type=\"com.apple.InterfaceBuilder3.Cocoa.XIB\" version=\"3.0\">\n<objects>" +
         objects + "</objects>\n</document>\n";
}

XibDocument documentWith(const std::string& objects) {
  return std::move(*XibDocument::parse(xib(objects)));
}

std::string adapted(const std::string& objects) {
  XibDocument document = documentWith(objects);
  document.adaptToGnustep();
  return document.xml();
}

bool contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

} // namespace

TEST(XibDocument, RefusesWhatIsNotAnInterfaceBuilderDocument) {
  EXPECT_FALSE(XibDocument::parse("no XML"));
  EXPECT_FALSE(XibDocument::parse("<document type=\"other\"/>"));
  EXPECT_FALSE(XibDocument::parse("<plist/>"));
  EXPECT_TRUE(XibDocument::parse(xib("")));
}

TEST(XibDocument, FindsEveryTextThatAUserSees) {
  const XibDocument document = documentWith(
      "<window title=\"W\"/><button toolTip=\"T\"><buttonCell title=\"B\" alternateTitle=\"A\"/>"
      "</button><textFieldCell placeholderString=\"P\" title=\"%\"/><comboBoxCell title=\"I\">"
      "<objectValues><string>I</string><string>J</string></objectValues></comboBoxCell>"
      "<tableColumn headerToolTip=\"H\"><tableHeaderCell key=\"headerCell\" "
      "title=\"C\"/></tableColumn>"
      "<string key=\"title\">K</string>");
  const std::vector<std::string> expected = {"W", "T", "B", "A", "P", "I", "I", "J", "H", "C", "K"};
  EXPECT_EQ(document.texts(), expected);
}

TEST(XibDocument, LeavesAloneWhatNobodySees) {
  const XibDocument document =
      documentWith("<customView userLabel=\"U\" id=\"x\" customClass=\"C\"/>"
                   "<textFieldCell key=\"dataCell\" title=\"Text Cell\"/>"
                   "<buttonCell key=\"prototype\" title=\"Radio\"/>"
                   "<string key=\"keyEquivalent\" base64-UTF8=\"YES\">DQ</string>");
  EXPECT_TRUE(document.texts().empty());
}

TEST(XibDocument, EscapesTheTranslations) {
  XibDocument document =
      documentWith("<buttonCell title=\"B\"/><objectValues><string>I</string></objectValues>");
  document.translate([](const std::string&) { return std::string("<\"é\" & co>"); });
  const std::vector<std::string> expected = {"<\"é\" & co>", "<\"é\" & co>"};
  EXPECT_EQ(XibDocument::parse(document.xml())->texts(), expected);
}

TEST(GnustepAdaption, GivesFontsTheirSize) {
  EXPECT_TRUE(contains(adapted("<font metaFont=\"system\"/>"), "size=\"13\""));
  EXPECT_TRUE(contains(adapted("<font metaFont=\"smallSystem\"/>"), "size=\"11\""));
  EXPECT_TRUE(contains(adapted("<font metaFont=\"system\" size=\"20\"/>"), "size=\"20\""));
}

TEST(GnustepAdaption, NamesTheFlagsOfABoldFontInsteadOfItsPurpose) {
  EXPECT_TRUE(
      contains(adapted("<font metaFont=\"systemBold\"/>"), "<font size=\"13\" fFlags=\"22\"/>"));
}

TEST(GnustepAdaption, SaysOfEveryCellWhetherItIsEditable) {
  EXPECT_TRUE(contains(adapted("<buttonCell title=\"B\"/>"), "editable=\"NO\""));
  EXPECT_FALSE(contains(adapted("<textFieldCell editable=\"YES\"/>"), "editable=\"NO\""));
}

TEST(GnustepAdaption, GivesSlidersTheirValue) {
  EXPECT_TRUE(contains(adapted("<sliderCell doubleValue=\"75\"/>"), " value=\"75\""));
}

TEST(GnustepAdaption, TrimsComboBoxesToWhatAppKitDraws) {
  const std::string trimmed = adapted(
      "<comboBox><rect key=\"frame\" x=\"10\" y=\"20\" width=\"103\" height=\"26\"/></comboBox>");
  EXPECT_TRUE(contains(trimmed, "x=\"10\" y=\"23\" width=\"100\" height=\"22\""));
}

TEST(GnustepAdaption, EncodesTextsThatTheLoaderWouldCut) {
  EXPECT_TRUE(
      contains(adapted("<string>für</string>"), "<string base64-UTF8=\"YES\">ZsO8cg</string>"));
  EXPECT_TRUE(contains(adapted("<string key=\"keyEquivalent\" base64-UTF8=\"YES\">DQ</string>"),
                       ">DQ</string>"));
}

TEST(PseudoLocale, AccentsVowelsAndGrowsByFortyPercent) {
  const std::string made = pseudoTranslation("Stay time:");
  EXPECT_TRUE(made.starts_with("Stáy tímé:"));
  std::size_t characters = 0;
  for (const char c : made)
    characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  EXPECT_EQ(characters, 14U);
  EXPECT_TRUE(vireonix::nibs::isValidUtf8(made));
}

TEST(PseudoLocale, KeepsPlaceholders) {
  EXPECT_TRUE(contains(pseudoTranslation("Left %i of %@"), "%i"));
  EXPECT_TRUE(contains(pseudoTranslation("Left %i of %@"), "%@"));
}
