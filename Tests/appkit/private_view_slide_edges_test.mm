// What the list of slides does in the rarer states, and what it leaves alone.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "support/open_panel.h"
#import "support/run_loop.h"

#include <filesystem>

using vireonix::bridge::utf8;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::fileBytes;
using vireonix::test::OpenPanelAnswer;
using vireonix::test::PanelTest;
using vireonix::test::pumpFor;
using vireonix::test::pumpUntil;
using vireonix::test::slideMarkup;

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class PanelSlideEdges : public PanelTest {
protected:
  void openWithThree() {
    open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one")) +
                        slideMarkup("2.jpg", captionMarkup("two")) + slideMarkup("3.jpg")));
  }

  // Before the panel has heard of the selection.
  void selectUnheard(NSUInteger row) {
    [[panel_ tableView] selectRowIndexes:[NSIndexSet indexSetWithIndex:row]
                    byExtendingSelection:NO];
  }

  void chooseNew() { chooseNext(folder_.write("from/new.png", "picture")); }

  NSMutableDictionary *slide(NSUInteger row) { return [[slides() list] objectAtIndex:row]; }
};

} // namespace

TEST_F(PanelSlideEdges, TheOpenPanelTakesOneFileOfFourKinds) {
  openWithThree();
  const OpenPanelAnswer answer(NSFileHandlingPanelOKButton, "/somewhere/a b.png");
  EXPECT_EQ(utf8([panel_ openFile]), "/somewhere/a b.png");
  NSOpenPanel *files = answer.panel();
  EXPECT_EQ(utf8([files title]), "Select a file(*.jpg; *.png; *.gif; *.swf)");
  EXPECT_TRUE([[files allowedFileTypes] isEqual:(@[ @"jpg", @"png", @"gif", @"swf" ])]);
  EXPECT_TRUE([files canChooseFiles]);
  EXPECT_FALSE([files canChooseDirectories]);
  EXPECT_FALSE([files canCreateDirectories]);
  EXPECT_FALSE([files allowsMultipleSelection]);
}

TEST_F(PanelSlideEdges, ACancelledOpenPanelGivesNoFile) {
  openWithThree();
  const OpenPanelAnswer answer(NSFileHandlingPanelCancelButton, "/somewhere/a.png");
  EXPECT_EQ([panel_ openFile], nil);
}

TEST_F(PanelSlideEdges, AddingDeletesAFolderInThePlaceOfTheFile) {
  openWithThree();
  folder_.write("workspace/intro_asset/new.png/inner", "inner");
  chooseNew();
  [panel_ onAdd:nil];
  EXPECT_EQ(fileBytes(inWorkspace("intro_asset/new.png")), "picture");
}

TEST_F(PanelSlideEdges, AddingInsertsBeforeTheSlideLastShown) {
  openWithThree();
  selectSlide(0);
  selectUnheard(2);
  chooseNew();
  [panel_ onAdd:nil];
  EXPECT_EQ(slideFiles(), (Names{"intro_asset/new.png", "1.jpg", "2.jpg", "3.jpg"}));
  EXPECT_EQ([[panel_ tableView] selectedRow], 2);
}

TEST_F(PanelSlideEdges, AddingBeforeASlideLeavesTheCaptionListAlone) {
  openWithThree();
  selectSlide(1);
  chooseNew();
  [panel_ onAdd:nil];
  settle();
  EXPECT_EQ(captionTexts(), Names{"two"});
  EXPECT_EQ([[slide(1) objectForKey:@"data"] count], 0U);
  EXPECT_EQ([[slide(2) objectForKey:@"data"] count], 1U);
}

TEST_F(PanelSlideEdges, ANewSlidesCaptionsAreItsOwn) {
  openWithThree();
  chooseNew();
  [panel_ onAdd:nil];
  settle();
  EXPECT_EQ([[slide(3) objectForKey:@"data"] count], 0U);
  EXPECT_TRUE([[slide(3) objectForKey:@"data"] isKindOfClass:[NSMutableArray class]]);
  EXPECT_EQ(captionTexts(), Names{});
}

TEST_F(PanelSlideEdges, EachActionSavesOnce) {
  openWithThree();
  selectSlide(0);
  chooseNew();
  int saves = 0;
  for (SEL action : { @selector(onAdd:), @selector(onBrowse:), @selector(onRemove:) }) {
    [panel_ performSelector:action withObject:nil];
    ++saves;
    EXPECT_TRUE(pumpUntil([&] { return [owner_ saves] >= saves; }));
    pumpFor(0.05);
    EXPECT_EQ([owner_ saves], saves) << sel_getName(action);
  }
}

TEST_F(PanelSlideEdges, WithoutASelectedSlideNothingIsRemoved) {
  openWithThree();
  const std::string before = document();
  folder_.write("workspace/1.jpg", "first");
  [panel_ onRemove:nil];
  selectSlide(0);
  [[panel_ tableView] deselectAll:nil];
  settle();
  [panel_ onRemove:nil];
  EXPECT_EQ(document(), before);
  EXPECT_TRUE(fs::exists(inWorkspace("1.jpg")));
  EXPECT_EQ([owner_ saves], 0);
}

TEST_F(PanelSlideEdges, RemovingBeforeAnySlideWasShownSelectsNone) {
  openWithThree();
  selectUnheard(0);
  [panel_ onRemove:nil];
  settle();
  EXPECT_EQ(slideFiles(), (Names{"2.jpg", "3.jpg"}));
  EXPECT_EQ([[panel_ tableView] selectedRow], -1);
  EXPECT_EQ(selectedIndex(), -1);
}

TEST_F(PanelSlideEdges, RemovingTakesTheSelectedSlideAndSelectsByTheOneLastShown) {
  openWithThree();
  selectSlide(0);
  selectUnheard(2);
  [panel_ onRemove:nil];
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg"}));
  EXPECT_EQ([[panel_ tableView] selectedRow], 0);
  settle();
  EXPECT_EQ(captionTexts(), Names{"one"});
}

TEST_F(PanelSlideEdges, TheCaptionListHoldsTheSlidesOwnRecords) {
  openWithThree();
  selectSlide(1);
  EXPECT_EQ([[captions() list] objectAtIndex:0], [[slide(1) objectForKey:@"data"] objectAtIndex:0]);
  EXPECT_NE([captions() list], [slide(1) objectForKey:@"data"]);
}

TEST_F(PanelSlideEdges, DeselectingLeavesTheCaptionListAndDeselectsItsRow) {
  openWithThree();
  selectSlide(0);
  selectCaption(0);
  [[panel_ tableView] deselectAll:nil];
  settle();
  EXPECT_EQ(captionTexts(), Names{"one"});
  EXPECT_EQ([[panel_ tbContent] selectedRow], -1);
  EXPECT_EQ(textOf([panel_ txtCaption]), "");
  for (NSButton *button in @[ [panel_ btnBrowse], [panel_ btnRemove] ]) {
    EXPECT_FALSE([button isEnabled]);
    EXPECT_TRUE([button isTransparent]);
  }
}

TEST_F(PanelSlideEdges, ABrowsedSlideIsTheOneThatWasShownWhenThePanelOpened) {
  openWithThree();
  selectSlide(0);
  selectUnheard(2);
  chooseNew();
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles(), (Names{"new.png", "2.jpg", "3.jpg"}));
}
