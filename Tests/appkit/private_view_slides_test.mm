// Adding, replacing, removing and showing slides.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "support/run_loop.h"

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

using vireonix::bridge::pathString;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::fileBytes;
using vireonix::test::PanelTest;
using vireonix::test::slideMarkup;

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class PanelSlides : public PanelTest {
protected:
  void openWithThree() {
    open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one") + captionMarkup("uno")) +
                        slideMarkup("2.jpg", captionMarkup("two")) + slideMarkup("3.jpg")));
    for (const char *name : {"1.jpg", "2.jpg", "3.jpg"})
      folder_.write(std::string("workspace/") + name, name);
  }
  bool isInWorkspace(const std::string &relative) const {
    return fs::exists(inWorkspace(relative));
  }
  // Without selecting it first.
  void removeResource(const std::string &path) { [panel_ checkRemoveResource:pathString(path)]; }
};

} // namespace

TEST_F(PanelSlides, SelectingOneShowsItsFileAndCaptions) {
  openWithThree();
  selectSlide(0);
  EXPECT_EQ(textOf([panel_ txtFileName]), "1.jpg");
  EXPECT_EQ(captionTexts(), (Names{"one", "uno"}));
  EXPECT_EQ([[panel_ tbContent] numberOfRows], 2);
  EXPECT_EQ(selectedIndex(), 0);
  EXPECT_TRUE([[panel_ txtFileName] isEnabled]);
  EXPECT_TRUE([[panel_ btnBrowse] isEnabled]);
  EXPECT_FALSE([[panel_ btnRemove] isTransparent]);
  selectSlide(2);
  EXPECT_EQ(captionTexts(), Names{});
}

TEST_F(PanelSlides, DeselectingKeepsTheShownSlideInMind) {
  openWithThree();
  selectSlide(1);
  [[panel_ tableView] deselectAll:nil];
  settle();
  EXPECT_EQ(selectedIndex(), 1);
  EXPECT_EQ(textOf([panel_ txtFileName]), "2.jpg");
  EXPECT_FALSE([[panel_ txtFileName] isEnabled]);
  EXPECT_FALSE([[panel_ btnBrowse] isEnabled]);
}

TEST_F(PanelSlides, AddingWithNothingSelectedAppendsAndSelects) {
  openWithThree();
  chooseNext(folder_.write("from/new.png", "picture"));
  [panel_ onAdd:nil];
  settle();
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg", "3.jpg", "intro_asset/new.png"}));
  EXPECT_EQ(fileBytes(inWorkspace("intro_asset/new.png")), "picture");
  EXPECT_EQ([[panel_ tableView] selectedRow], 3);
  EXPECT_EQ(selectedIndex(), 3);
  EXPECT_EQ(textOf([panel_ txtFileName]), "intro_asset/new.png");
  EXPECT_NE(document().find("Background_image=\"intro_asset/new.png\""), std::string::npos);
}

TEST_F(PanelSlides, AddingWithOneSelectedInsertsBeforeIt) {
  openWithThree();
  selectSlide(2);
  chooseNext(folder_.write("from/new.png", "picture"));
  [panel_ onAdd:nil];
  settle();
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg", "intro_asset/new.png", "3.jpg"}));
  EXPECT_EQ([[panel_ tableView] selectedRow], 2);
}

TEST_F(PanelSlides, AddingReplacesAFileOfTheSameName) {
  openWithThree();
  folder_.write("workspace/intro_asset/new.png", "old");
  chooseNext(folder_.write("from/new.png", "new"));
  [panel_ onAdd:nil];
  EXPECT_EQ(fileBytes(inWorkspace("intro_asset/new.png")), "new");
}

TEST_F(PanelSlides, AddingTheDestinationItselfLosesTheFile) {
  openWithThree();
  chooseNext(folder_.write("workspace/intro_asset/new.png", "picture"));
  [panel_ onAdd:nil];
  EXPECT_EQ(slideFiles().back(), "intro_asset/new.png");
  EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
}

TEST_F(PanelSlides, ACancelledOrMissingChoiceChangesNothing) {
  openWithThree();
  const std::string before = document();
  selectSlide(0);
  for (const std::string &choice : {std::string(), folder_.at("no-such.png")}) {
    chooseNext(choice);
    [panel_ onAdd:nil];
    [panel_ onBrowse:nil];
  }
  EXPECT_EQ(slideFiles().size(), 3U);
  EXPECT_EQ(document(), before);
}

TEST_F(PanelSlides, BrowsingPutsTheFileInTheWorkspaceItself) {
  openWithThree();
  selectSlide(0);
  chooseNext(folder_.write("from/new.gif", "movie"));
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles(), (Names{"new.gif", "2.jpg", "3.jpg"}));
  EXPECT_EQ(fileBytes(inWorkspace("new.gif")), "movie");
  EXPECT_FALSE(isInWorkspace("1.jpg"));
  EXPECT_EQ(textOf([panel_ txtFileName]), "new.gif");
  for (NSDictionary *caption in [captions() list])
    EXPECT_TRUE([[caption objectForKey:@"Background_image"] isEqual:@"new.gif"]);
}

TEST_F(PanelSlides, BrowsingForTheSameNameLosesTheFile) {
  openWithThree();
  selectSlide(0);
  chooseNext(folder_.write("from/1.jpg", "new"));
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles().front(), "1.jpg");
  EXPECT_FALSE(isInWorkspace("1.jpg"));
}

TEST_F(PanelSlides, BrowsingKeepsAFileThatAnotherSlideUses) {
  open(documentMarkup(slideMarkup("1.jpg") + slideMarkup("1.jpg")));
  folder_.write("workspace/1.jpg", "shared");
  selectSlide(1);
  chooseNext(folder_.write("from/new.gif", "movie"));
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "new.gif"}));
  EXPECT_TRUE(isInWorkspace("1.jpg"));
}

TEST_F(PanelSlides, BrowsingActsOnTheSlideLastShown) {
  openWithThree();
  chooseNext(folder_.write("from/new.gif", "movie"));
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg", "3.jpg"}));
  selectSlide(1);
  [[panel_ tableView] deselectAll:nil];
  settle();
  [panel_ onBrowse:nil];
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "new.gif", "3.jpg"}));
}

TEST_F(PanelSlides, RemovingSelectsTheOneThatFollowed) {
  openWithThree();
  selectSlide(0);
  [panel_ onRemove:nil];
  settle();
  EXPECT_EQ(slideFiles(), (Names{"2.jpg", "3.jpg"}));
  EXPECT_EQ([[panel_ tableView] selectedRow], 0);
  EXPECT_EQ(selectedIndex(), 0);
  EXPECT_EQ(captionTexts(), Names{"two"});
  EXPECT_EQ(textOf([panel_ txtFileName]), "2.jpg");
  EXPECT_FALSE(isInWorkspace("1.jpg"));
  EXPECT_TRUE(isInWorkspace("2.jpg"));
  EXPECT_EQ(document().find("1.jpg"), std::string::npos);
}

TEST_F(PanelSlides, RemovingTheLastSelectsTheNewLast) {
  openWithThree();
  selectSlide(2);
  [panel_ onRemove:nil];
  settle();
  EXPECT_EQ([[panel_ tableView] selectedRow], 1);
  EXPECT_EQ(selectedIndex(), 1);
}

TEST_F(PanelSlides, RemovingTheOnlyOneLeavesNoSelection) {
  open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one"))));
  selectSlide(0);
  [panel_ onRemove:nil];
  settle();
  EXPECT_EQ(slideFiles(), Names{});
  EXPECT_EQ([[panel_ tableView] selectedRow], -1);
  EXPECT_EQ(selectedIndex(), -1);
  EXPECT_EQ(captionTexts(), Names{});
  EXPECT_FALSE([[panel_ btnRemove] isEnabled]);
  [panel_ onRemove:nil];
}

TEST_F(PanelSlides, RemovingKeepsAFileThatAnotherSlideUses) {
  open(documentMarkup(slideMarkup("1.jpg") + slideMarkup("1.jpg")));
  folder_.write("workspace/1.jpg", "shared");
  selectSlide(0);
  [panel_ onRemove:nil];
  EXPECT_TRUE(isInWorkspace("1.jpg"));
  [panel_ onRemove:nil];
  EXPECT_FALSE(isInWorkspace("1.jpg"));
}

TEST_F(PanelSlides, ACaptionAddedRightAfterARemovalGoesToTheSelectedSlide) {
  openWithThree();
  selectSlide(0);
  [panel_ onRemove:nil];
  [[panel_ txtCaption] setStringValue:@"added"];
  [panel_ onContentAdd:nil];
  settle();
  EXPECT_EQ(captionTexts(), (Names{"two", "added"}));
  EXPECT_EQ(savedValue(0, 0, "text"), "two");
  EXPECT_EQ(savedValue(0, 1, "text"), "added");
}

TEST_F(PanelSlides, ACaptionAddedRightAfterAnInsertionGoesToTheNewSlide) {
  openWithThree();
  selectSlide(0);
  chooseNext(folder_.write("from/new.png", "picture"));
  [panel_ onAdd:nil];
  [[panel_ txtCaption] setStringValue:@"added"];
  [panel_ onContentAdd:nil];
  settle();
  EXPECT_EQ(savedValue(0, 0, "text"), "added");
  EXPECT_EQ(savedValue(0, 1, "text"), "(no caption)");
  EXPECT_EQ(savedValue(1, 1, "text"), "uno");
}

TEST_F(PanelSlides, OnlyAFileInsideTheWorkspaceIsEverDeleted) {
  folder_.write("outside.jpg", "precious");
  folder_.write("workspace/folder/inner.jpg", "inner");
  ASSERT_EQ(symlink(folder_.path().c_str(), inWorkspace("up").c_str()), 0);
  const Names paths = {"",
                       ".",
                       "..",
                       "/",
                       "folder",
                       "folder/",
                       "../outside.jpg",
                       "up/outside.jpg",
                       "folder/../../outside.jpg",
                       folder_.at("outside.jpg"),
                       "no/such.jpg"};
  std::string markup;
  for (const std::string &path : paths)
    markup += slideMarkup(path);
  open(documentMarkup(markup));
  for (const std::string &path : paths)
    removeResource(path);
  EXPECT_EQ(fileBytes(folder_.at("outside.jpg")), "precious");
  EXPECT_TRUE(isInWorkspace("folder/inner.jpg"));
  EXPECT_TRUE(isInWorkspace("index.html"));
}

TEST_F(PanelSlides, ALinkIsDeletedAndNotWhatItLeadsTo) {
  folder_.write("outside.jpg", "precious");
  ASSERT_EQ(symlink(folder_.at("outside.jpg").c_str(), inWorkspace("link.jpg").c_str()), 0);
  open(documentMarkup(slideMarkup("link.jpg")));
  removeResource("link.jpg");
  EXPECT_FALSE(fs::is_symlink(inWorkspace("link.jpg")));
  EXPECT_EQ(fileBytes(folder_.at("outside.jpg")), "precious");
}

TEST_F(PanelSlides, AFileThatNoSlideUsesIsKept) {
  openWithThree();
  folder_.write("workspace/other.jpg", "other");
  removeResource("other.jpg");
  EXPECT_TRUE(isInWorkspace("other.jpg"));
}

TEST_F(PanelSlides, TypingAFileNameRenamesTheSlidesFile) {
  openWithThree();
  type([panel_ txtFileName], "ignored");
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg", "3.jpg"}));
  selectSlide(0);
  type([panel_ txtFileName], "other.jpg");
  EXPECT_EQ(slideFiles(), (Names{"other.jpg", "2.jpg", "3.jpg"}));
  for (NSDictionary *caption in [captions() list])
    EXPECT_TRUE([[caption objectForKey:@"Background_image"] isEqual:@"other.jpg"]);
  EXPECT_NE(document().find("other.jpg"), std::string::npos);
}
