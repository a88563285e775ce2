// The content editor's set-up, drawing, saving and release.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "support/run_loop.h"
#import "vireonix/ColorButtonCell.h"

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

using vireonix::bridge::utf8;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::PanelTest;
using vireonix::test::pumpFor;
using vireonix::test::pumpUntil;
using vireonix::test::slideMarkup;

namespace {

class PanelSetUp : public PanelTest {};
class PanelSave : public PanelTest {};

std::vector<std::string> titlesOf(NSTableView *table) {
  std::vector<std::string> titles;
  for (NSTableColumn *column in [table tableColumns])
    titles.push_back(utf8([column identifier]) + " " + utf8([[column headerCell] stringValue]));
  return titles;
}

} // namespace

TEST_F(PanelSetUp, ShowsTheSlidesAndNothingSelected) {
  open(documentMarkup(slideMarkup("intro_asset/a.jpg", captionMarkup("Hi", "In_Time='5'")) +
                      slideMarkup("b.swf")));
  EXPECT_EQ(slideFiles(), (std::vector<std::string>{"intro_asset/a.jpg", "b.swf"}));
  EXPECT_EQ([[panel_ tableView] numberOfRows], 2);
  EXPECT_EQ([[panel_ tbContent] numberOfRows], 0);
  EXPECT_EQ([[panel_ tableView] selectedRow], -1);
  EXPECT_EQ(selectedIndex(), -1);
  EXPECT_EQ(textOf([panel_ txtInTime]), "0");
  EXPECT_EQ(textOf([panel_ txtStayTime]), "1");
  EXPECT_EQ(textOf([panel_ txtTextSize]), "10");
  EXPECT_EQ(textOf([panel_ txtCaption]), "");
  EXPECT_FALSE([[panel_ txtFileName] isEnabled]);
  for (NSButton *button in @[ [panel_ btnBrowse], [panel_ btnRemove] ]) {
    EXPECT_FALSE([button isEnabled]);
    EXPECT_TRUE([button isTransparent]);
  }
}

TEST_F(PanelSetUp, BuildsTheColumnsOfBothTables) {
  open(documentMarkup(""));
  EXPECT_EQ(titlesOf([panel_ tableView]), (std::vector<std::string>{"0 Image File Name"}));
  EXPECT_EQ(titlesOf([panel_ tbContent]),
            (std::vector<std::string>{"0 Text objects in slider", "1 Size", "2 Color", "3 Style",
                                      "4 Align", "5 In Time", "6 Stay Time", "7 Text Align",
                                      "8 Text Animation", "9 Start Direction", "10 ID"}));
  EXPECT_FALSE([[panel_ tbContent] allowsColumnSelection]);
  EXPECT_TRUE([[panel_ tableView] drawsGrid]);
  EXPECT_TRUE([[panel_ tbContent] drawsGrid]);
  EXPECT_EQ([[panel_ tbContent] dataSource], captions());
  EXPECT_EQ([[panel_ tableView] delegate], slides());
}

TEST_F(PanelSetUp, NamesTheStylesOfTheDocument) {
  open(documentMarkup(""));
  NSComboBox *styles = [panel_ comStyle];
  EXPECT_TRUE([[styles objectValues] isEqual:(@[ @"Fade", @"Fly", @"Zoom" ])]);
  EXPECT_EQ([styles indexOfSelectedItem], 0);
  EXPECT_EQ(textOf(styles), "Fade");
}

TEST_F(PanelSetUp, KeepsTheNibsStylesWhenTheDocumentHasNone) {
  open("<main><data/></main>");
  EXPECT_GT([[panel_ comStyle] numberOfItems], 0);
  EXPECT_TRUE([[field("StyleXML") XMLString] hasPrefix:@"<define_animation_Style>"]);
}

TEST_F(PanelSetUp, EveryComboBoxShowsItsSelectedItem) {
  open(documentMarkup(""));
  for (NSComboBox *combo in @[
         [panel_ comAlign], [panel_ comTextAlign], [panel_ comTextAnimation],
         [panel_ comStartDirection], [panel_ comStyle]
       ]) {
    EXPECT_EQ([combo indexOfSelectedItem], 0);
    EXPECT_EQ(textOf(combo), utf8([combo itemObjectValueAtIndex:0]));
    EXPECT_EQ([combo target], panel_);
  }
  EXPECT_EQ([[panel_ comAlign] numberOfItems], 9);
  EXPECT_TRUE([[[panel_ btnTextColor] cell] isKindOfClass:[ColorButtonCell class]]);
}

TEST_F(PanelSetUp, WithoutAContainerTheTablesAreEmptyAndThePanelStaysUsable) {
  open("<main/>");
  EXPECT_EQ([[panel_ tableView] numberOfColumns], 0);
  EXPECT_EQ([[panel_ tbContent] numberOfColumns], 0);
  EXPECT_EQ(captions(), nil);
  chooseNext(folder_.write("new.jpg", "picture"));
  [panel_ onAdd:nil];
  [panel_ onRemove:nil];
  [panel_ onBrowse:nil];
  [panel_ onContentAdd:nil];
  [panel_ onContentSave:nil];
  [panel_ onContentRemove:nil];
  [panel_ onTypeButtonChange:[panel_ comAlign]];
  type([panel_ txtFileName], "x");
  settle();
  EXPECT_EQ(slideFiles(), (std::vector<std::string>{"intro_asset/new.jpg"}));
  EXPECT_NE(document().find("intro_asset/new.jpg"), std::string::npos);
}

TEST_F(PanelSetUp, OpensEmptyOnWhatIsNoDocument) {
  for (const std::string &bytes : {std::string("no markup"), std::string(), std::string("<a/>"),
                                   std::string("\xFF\xFE\x00", 3), std::string("<main")}) {
    open(bytes);
    EXPECT_EQ([[panel_ tableView] numberOfColumns], 0) << bytes;
    EXPECT_EQ([[panel_ tbContent] dataSource], nil) << bytes;
    EXPECT_EQ(slideFiles(), std::vector<std::string>{}) << bytes;
    [panel_ onSave:nil];
    EXPECT_EQ(document(), "<?xml version=\"1.0\" encoding=\"utf-8\"?><main><define_animation_Style>"
                          "<s Name=\"Template style\"/></define_animation_Style><data/></main>")
        << bytes;
    settle();
    close();
  }
}

TEST_F(PanelSetUp, OfSeveralContainersTheLastIsShownAndOneIsSaved) {
  open("<main><data><slide Background_image='first'/></data>"
       "<data><slide Background_image='last'/></data></main>");
  EXPECT_EQ(slideFiles(), std::vector<std::string>{"last"});
  [panel_ onSave:nil];
  EXPECT_NE(
      document().find("<data><slide effect=\"fade\" Background_image=\"last\"/></data></main>"),
      std::string::npos);
  EXPECT_EQ(document().find("first"), std::string::npos);
}

TEST_F(PanelSetUp, AMalformedDocumentIsShownAsFarAsItCanBeRead) {
  open("<main kept='1'><data><slide Background_image='a.jpg'>" + captionMarkup("Hi") +
       "<slide Background_image='b.jpg'");
  EXPECT_EQ([[panel_ tableView] numberOfColumns], 1);
  ASSERT_FALSE(slideFiles().empty());
  EXPECT_EQ(slideFiles().front(), "a.jpg");
  selectSlide(0);
  ASSERT_FALSE(captionTexts().empty());
  EXPECT_EQ(captionTexts().front(), "Hi");
  [panel_ onSave:nil];
  EXPECT_NE(document().find("<main kept=\"1\">"), std::string::npos);
  EXPECT_EQ(savedValue(0, 0, "text"), "Hi");
}

TEST_F(PanelSetUp, InstallsAMissingWorkspace) {
  std::filesystem::remove_all(folder_.at("workspace"));
  open();
  EXPECT_TRUE(std::filesystem::is_directory(folder_.at("workspace")));
}

TEST_F(PanelSetUp, WithoutATemplateNothingIsMissedThatIsNotThere) {
  std::filesystem::remove_all(folder_.at("bundle"));
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Hi", "own='1'"))));
  EXPECT_TRUE([[field("SlideXML") attributeForName:@"Background_image"] isEqual:@"a.jpg"]);
  [panel_ onSave:nil];
  EXPECT_EQ(savedValue(0, 0, "own"), "1");
}

TEST_F(PanelSetUp, TheTemplateIsTheBundlesWhereverThereIsABundle) {
  open(documentMarkup(slideMarkup("a.jpg")));
  EXPECT_TRUE([[[panel_ getDataXML] XMLString] hasPrefix:@"<main><define_animation_Style><s Name="
                                                         @"\"Template style\"/>"]);
  folder_.write("bundle/Contents/Resources/data/intro_asset/data.xml", "no markup");
  EXPECT_EQ([panel_ getDataXML], nil);
  std::filesystem::remove_all(folder_.at("bundle"));
  EXPECT_TRUE([[[panel_ getDataXML] attributeForName:@"version"] isEqual:@"7"]);
  std::filesystem::remove_all(folder_.at("workspace"));
  EXPECT_EQ([panel_ getDataXML], nil);
}

TEST_F(PanelSetUp, ATemplateThatLacksAPartLeavesWhatIsKnown) {
  open(documentMarkup(""));
  folder_.write("bundle/Contents/Resources/data/intro_asset/data.xml", "<main><data/></main>");
  [panel_ loadStyleXML];
  [panel_ loadSlideXML];
  EXPECT_TRUE(
      [[field("StyleXML") XMLString] hasPrefix:@"<define_animation_Style><s Name=\"Fade\"/>"]);
  EXPECT_TRUE([[field("SlideXML") attributeForName:@"effect"] isEqual:@"fade"]);
  folder_.write("bundle/Contents/Resources/data/intro_asset/data.xml",
                "<main><define_animation_Style/><define_animation_Style a='2'/>"
                "<data><slide effect='new'/><slide/></data><data/></main>");
  [panel_ loadStyleXML];
  [panel_ loadSlideXML];
  EXPECT_TRUE([[field("StyleXML") XMLString] isEqual:@"<define_animation_Style/>"]);
  EXPECT_TRUE([[field("SlideXML") attributeForName:@"effect"] isEqual:@"new"]);
}

TEST_F(PanelSetUp, WithoutAnyTemplateSlideCaptionsAreStillSaved) {
  folder_.write("bundle/Contents/Resources/data/intro_asset/data.xml", "<main/>");
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Hi", "own='1'"))));
  EXPECT_EQ(field("SlideXML"), nil);
  [panel_ onSave:nil];
  EXPECT_EQ(savedValue(0, 0, "text"), "Hi");
  EXPECT_EQ(savedValue(0, 0, "own"), "1");
}

TEST_F(PanelSave, WritesTheWholeDocumentInTheTemplatesShape) {
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Hi", "In_Time='5' other='x'"))));
  [panel_ onSave:nil];
  EXPECT_EQ(document(),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><main version=\"7\"><define_animation_Style>"
            "<s Name=\"Fade\"/><s Name=\"Fly\"/><s Name=\"Zoom\"/></define_animation_Style><data>"
            "<slide effect=\"fade\" Background_image=\"a.jpg\"><text set_animation_style=\"Fade\" "
            "Align=\"C\" In_Time=\"5\" Stay_Time=\"1\" Text_Align=\"0\" "
            "Text_Animation_LetterByLetter=\"0\" Animation_Start_Direction=\"0\" speed=\"2\"><text>"
            "<![CDATA[<b><font size=\"24\" color=\"#FF0000\">Hi</font></b>]]></text></text></slide>"
            "</data></main>");
}

TEST_F(PanelSave, ASavedDocumentIsSavedAgainByteForByte) {
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("one") + " <!--x-->" +
                                               captionMarkup("\xF0\x9F\x98\x80\n]]]]><![CDATA[>")) +
                      slideMarkup("b.jpg")));
  [panel_ onSave:nil];
  const std::string once = document();
  [panel_ onSave:nil];
  EXPECT_EQ(document(), once);
  close();
  open();
  [panel_ onSave:nil];
  EXPECT_EQ(document(), once);
}

TEST_F(PanelSave, ANodeThatIsNoCaptionBecomesOneOfTheTemplatesValues) {
  open(documentMarkup(slideMarkup("a.jpg", "<!--x-->" + captionMarkup("Hi", "In_Time='5'"))));
  [panel_ onSave:nil];
  EXPECT_EQ(savedValue(0, 0, "text"), "(null)");
  EXPECT_EQ(savedValue(0, 0, "speed"), "2");
  EXPECT_EQ(savedValue(0, 1, "In_Time"), "5");
  EXPECT_EQ(savedValue(0, 1, "text"), "Hi");
}

TEST_F(PanelSave, ACaptionThatWasSavedAndCannotBeReadBecomesNull) {
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Rhythm & Blues", "In_Time='5'"))));
  [panel_ onSave:nil];
  EXPECT_EQ(savedValue(0, 0, "text"), "(null)");
  EXPECT_EQ(savedValue(0, 0, "size"), "(null)");
  EXPECT_EQ(savedValue(0, 0, "In_Time"), "5");
}

TEST_F(PanelSave, TakesTheRootsAttributesFromTheFileAsItIsNow) {
  open(documentMarkup(""));
  folder_.write("workspace/intro_asset/data.xml", "<changed a='&lt;' b='2'><data/>");
  [panel_ onSave:nil];
  EXPECT_NE(document().find("<main a=\"&lt;\" b=\"2\"><define_animation_Style>"),
            std::string::npos);
}

TEST_F(PanelSave, ChangesNoOtherFileAndKeepsTheFilesMode) {
  open(documentMarkup(""));
  ASSERT_EQ(chmod(inWorkspace("intro_asset/data.xml").c_str(), 0640), 0);
  [panel_ onSave:nil];
  struct stat status = {};
  ASSERT_EQ(stat(inWorkspace("intro_asset/data.xml").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(folder_.at("workspace")))
    names.push_back(entry.path().filename());
  std::ranges::sort(names);
  EXPECT_EQ(names, (std::vector<std::string>{"data.xml", "index.html", "intro_asset"}));
}

TEST_F(PanelSave, WritesNothingThroughALinkThatLeadsOutOfTheWorkspace) {
  folder_.write("outside/data.xml", documentMarkup(slideMarkup("a.jpg")));
  std::filesystem::create_directory(folder_.at("workspace"));
  std::filesystem::create_directory_symlink("../outside", inWorkspace("intro_asset"));
  open();
  const std::string before = document();
  EXPECT_EQ(slideFiles(), std::vector<std::string>{"a.jpg"});
  [panel_ onSave:nil];
  EXPECT_EQ(document(), before);
}

TEST_F(PanelSave, HasTheOwnerSaveOnAnotherThread) {
  open(documentMarkup(""));
  [panel_ onSave:nil];
  [panel_ onSave:nil];
  EXPECT_TRUE(pumpUntil([&] { return [owner_ saves] == 2; }));
}

TEST_F(PanelSave, DoesNothingWithoutAWorkspace) {
  open(documentMarkup(""));
  std::filesystem::remove_all(folder_.at("workspace"));
  [panel_ onSave:nil];
  [panel_ setWorkSpace:nil];
  [panel_ onSave:nil];
  pumpFor(0.1);
  EXPECT_FALSE(std::filesystem::exists(folder_.at("workspace")));
  EXPECT_EQ([owner_ saves], 0);
}

TEST_F(PanelSave, ThePanelMayGoWhileChangesAreUnderWay) {
  open(documentMarkup(slideMarkup("a.jpg", captionMarkup("Hi"))));
  [[panel_ tableView] selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
  [panel_ onSave:nil];
  close();
  EXPECT_TRUE(pumpUntil([&] { return [owner_ saves] == 1; }));
  pumpFor(0.05);
}
