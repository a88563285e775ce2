// Files and workspaces that are not what the content editor hopes for.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "support/alerts.h"
#import "support/privileges.h"
#import "support/run_loop.h"

#include "Core/slider_document.h"
#include "Core/xml.h"

#include <filesystem>
#include <sys/stat.h>

using vireonix::bridge::utf8;
using vireonix::test::AlertAnswers;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::fileBytes;
using vireonix::test::FullDisk;
using vireonix::test::PanelTest;
using vireonix::test::pumpFor;
using vireonix::test::slideMarkup;
using vireonix::test::WithoutPrivileges;

namespace core = vireonix::core;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

// Each test ends with every alert that was shown; there should be none.
class PanelBadInput : public PanelTest {
protected:
  PanelBadInput() {
    open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one")) + slideMarkup("2.jpg")));
    folder_.write("workspace/1.jpg", "first");
    folder_.write("workspace/2.jpg", "second");
  }
  ~PanelBadInput() override { EXPECT_TRUE(alerts_.shown().empty()); }

  void add(const std::string &file) {
    chooseNext(file);
    [panel_ onAdd:nil];
    settle();
  }
  void browse(const std::string &file) {
    chooseNext(file);
    [panel_ onBrowse:nil];
    settle();
  }

  // The slides' files in the document on disk.
  Names savedFiles() {
    const auto root = core::xml::parse(document(), core::xml::Mode::Strict);
    Names names;
    if (!root)
      return {"(no document)"};
    const auto read = core::slider::readDocument(*root);
    for (const auto &slide : *read.slides)
      names.emplace_back(slide.backgroundImage.value_or("(none)"));
    return names;
  }

  void expectAgreement() { EXPECT_EQ(savedFiles(), slideFiles()); }

  bool isInWorkspace(const std::string &relative) { return fs::exists(inWorkspace(relative)); }

  AlertAnswers alerts_;
};

} // namespace

TEST_F(PanelBadInput, AFileThatVanishesOnceChosenIsNamedAndMissing) {
  // A way to the very file that is deleted to make room for the copy.
  folder_.write("workspace/intro_asset/new.png", "picture");
  fs::create_directory(folder_.at("from"));
  fs::create_symlink(inWorkspace("intro_asset/new.png"), folder_.at("from/new.png"));
  add(folder_.at("from/new.png"));
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg", "intro_asset/new.png"}));
  EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
  expectAgreement();
}

TEST_F(PanelBadInput, NothingIsReplacedThroughALinkThatLeadsOutOfTheWorkspace) {
  folder_.write("outside/new.png", "theirs");
  fs::remove_all(inWorkspace("intro_asset"));
  fs::create_directory_symlink("../outside", inWorkspace("intro_asset"));
  add(folder_.write("from/new.png", "picture"));
  add(folder_.write("from/other.png", "picture"));
  EXPECT_EQ(fileBytes(folder_.at("outside/new.png")), "theirs");
  EXPECT_FALSE(fs::exists(folder_.at("outside/other.png")));
  EXPECT_EQ(slideFiles(),
            (Names{"1.jpg", "2.jpg", "intro_asset/other.png", "intro_asset/new.png"}));
}

TEST_F(PanelBadInput, AFileThatVanishesBeforeTheAnswerChangesNothing) {
  const std::string before = document();
  const std::string file = folder_.write("from/new.png", "picture");
  chooseNext(file);
  fs::remove(file);
  [panel_ onAdd:nil];
  selectSlide(0);
  [panel_ onBrowse:nil];
  EXPECT_EQ(document(), before);
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "2.jpg"}));
}

TEST_F(PanelBadInput, AnUnreadableFileIsNamedAndMissing) {
  const std::string file = folder_.write("from/new.png", "picture");
  fs::permissions(file, fs::perms::none);
  const WithoutPrivileges asAUser;
  ASSERT_TRUE(fileBytes(file).empty());
  add(file);
  EXPECT_EQ(slideFiles().back(), "intro_asset/new.png");
  EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
  expectAgreement();
  selectSlide(1);
  browse(file);
  EXPECT_EQ(slideFiles(), (Names{"1.jpg", "new.png", "intro_asset/new.png"}));
  EXPECT_FALSE(isInWorkspace("new.png"));
  EXPECT_FALSE(isInWorkspace("2.jpg"));
  expectAgreement();
}

TEST_F(PanelBadInput, AFolderIsNoFile) {
  const std::string before = document();
  folder_.write("from/intro_asset/inner.png", "picture");
  folder_.write("from/album.png/inner.png", "picture");
  for (const char *name : {"from/intro_asset", "from/album.png"}) {
    add(folder_.at(name));
    selectSlide(0);
    browse(folder_.at(name));
  }
  EXPECT_EQ(document(), before);
  EXPECT_TRUE(isInWorkspace("intro_asset/data.xml"));
  EXPECT_FALSE(isInWorkspace("intro_asset/album.png"));
}

TEST_F(PanelBadInput, APipeIsNotWaitedFor) {
  fs::create_directory(folder_.at("from"));
  ASSERT_EQ(mkfifo(folder_.at("from/new.png").c_str(), 0600), 0);
  add(folder_.at("from/new.png"));
  EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
  expectAgreement();
}

TEST_F(PanelBadInput, UnusualNamesComeThroughToTheDocumentAndBack) {
  const Names names = {"it's.png",
                       "say \"hi\".png",
                       "a&b &amp; c.png",
                       "100% %@ %n.png",
                       "two\nlines.png",
                       "tab\there.png",
                       ".hidden.png",
                       "-rf.png",
                       "--.png",
                       "<tag>.png",
                       "]]>.png",
                       "b\xC3\xBChne.png",
                       "e\xCC\x81.png",
                       "\xE7\xB5\xB5\xE6\x9C\xAC.png",
                       "\xF0\x9F\x98\x80.png",
                       " spaced .png",
                       "#1?x=y.png",
                       "semi;colon.png",
                       "dots...png"};
  Names expected = {"1.jpg", "2.jpg"};
  for (const std::string &name : names) {
    [[panel_ tableView] deselectAll:nil];
    settle();
    add(folder_.write("from/" + name, "bytes of " + name));
    expected.push_back("intro_asset/" + name);
    EXPECT_EQ(fileBytes(inWorkspace("intro_asset/" + name)), "bytes of " + name) << name;
    EXPECT_EQ(textOf([panel_ txtFileName]), "intro_asset/" + name);
  }
  EXPECT_EQ(slideFiles(), expected);
  expectAgreement();
  close();
  open();
  EXPECT_EQ(slideFiles(), expected);
  selectSlide(2);
  for (std::size_t i = 0; i < names.size(); ++i)
    [panel_ onRemove:nil];
  settle();
  for (const std::string &name : names)
    EXPECT_FALSE(isInWorkspace("intro_asset/" + name)) << name;
  EXPECT_TRUE(isInWorkspace("2.jpg"));
}

TEST_F(PanelBadInput, ANameThatIsNotTextHarmsNothing) {
  const std::string file = folder_.write("from/bad-\xFF\xFE.png", "picture");
  add(file);
  selectSlide(0);
  browse(file);
  EXPECT_NE(document(), "");
  expectAgreement();
  close();
  open();
  expectAgreement();
  EXPECT_TRUE(isInWorkspace("index.html"));
}

TEST_F(PanelBadInput, AFullDiskLeavesNoPartOfAFile) {
  const std::string file = folder_.write("from/new.png", std::string(100000, 'x'));
  {
    const FullDisk disk(50000);
    add(file);
  }
  EXPECT_EQ(slideFiles().back(), "intro_asset/new.png");
  EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
  expectAgreement();
  Names left;
  for (const auto &entry : fs::directory_iterator(inWorkspace("intro_asset")))
    left.push_back(entry.path().filename());
  EXPECT_EQ(left, Names{"data.xml"});
}

TEST_F(PanelBadInput, AFullDiskLeavesTheDocumentWholeAndTheNextSaveCatchesUp) {
  const std::string before = document();
  selectSlide(0);
  selectCaption(0);
  {
    const FullDisk disk(100);
    type([panel_ txtCaption], "kept in mind");
    add(folder_.write("from/new.png", "tiny"));
    EXPECT_EQ(document(), before);
  }
  [panel_ onSave:nil];
  EXPECT_EQ(savedValue(1, 0, "text"), "kept in mind");
  expectAgreement();
}

TEST_F(PanelBadInput, AReadOnlyWorkspaceStaysAsItIs) {
  const std::string before = document();
  const std::string file = folder_.write("from/new.png", "picture");
  for (const char *folder : {"", "intro_asset"})
    fs::permissions(inWorkspace(folder), fs::perms::owner_read | fs::perms::owner_exec);
  {
    const WithoutPrivileges asAUser;
    add(file);
    selectSlide(0);
    selectCaption(0);
    type([panel_ txtCaption], "kept in mind");
    [panel_ onContentAdd:nil];
    browse(file);
    [panel_ onRemove:nil];
    settle();
    EXPECT_EQ(document(), before);
    EXPECT_TRUE(isInWorkspace("1.jpg"));
    EXPECT_FALSE(isInWorkspace("new.png"));
    EXPECT_FALSE(isInWorkspace("intro_asset/new.png"));
  }
  for (const char *folder : {"", "intro_asset"})
    fs::permissions(inWorkspace(folder), fs::perms::owner_all);
  [panel_ onSave:nil];
  EXPECT_EQ(slideFiles(), (Names{"2.jpg", "intro_asset/new.png"}));
  expectAgreement();
}

TEST_F(PanelBadInput, AReadOnlyDocumentInAWritableFolderIsReplaced) {
  fs::permissions(inWorkspace("intro_asset/data.xml"), fs::perms::owner_read);
  const WithoutPrivileges asAUser;
  add(folder_.write("from/new.png", "picture"));
  EXPECT_EQ(savedFiles().back(), "intro_asset/new.png");
}

TEST_F(PanelBadInput, AWorkspaceDeletedMeanwhileIsNotMadeAgain) {
  const std::string file = folder_.write("from/new.png", "picture");
  selectSlide(0);
  fs::remove_all(folder_.at("workspace"));
  add(file);
  browse(file);
  selectSlide(1);
  [[panel_ txtCaption] setStringValue:@"caption"];
  [panel_ onContentAdd:nil];
  selectCaption(0);
  type([panel_ txtCaption], "typed");
  type([panel_ txtFileName], "name.png");
  [panel_ onTypeButtonChange:[panel_ comAlign]];
  [panel_ onContentSave:nil];
  [panel_ onContentRemove:nil];
  [panel_ onRemove:nil];
  [panel_ onSave:nil];
  pumpFor(0.1);
  EXPECT_FALSE(fs::exists(folder_.at("workspace")));
  EXPECT_EQ([owner_ saves], 0);
}

TEST_F(PanelBadInput, AMediaFolderDeletedMeanwhileStopsTheDocumentOnly) {
  fs::remove_all(inWorkspace("intro_asset"));
  add(folder_.write("from/new.png", "picture"));
  EXPECT_EQ(slideFiles().back(), "intro_asset/new.png");
  fs::create_directory(inWorkspace("intro_asset"));
  [panel_ onSave:nil];
  expectAgreement();
}

TEST_F(PanelBadInput, AFolderInThePlaceOfTheDocumentStaysAFolder) {
  fs::remove(inWorkspace("intro_asset/data.xml"));
  folder_.write("workspace/intro_asset/data.xml/inner", "kept");
  add(folder_.write("from/new.png", "picture"));
  EXPECT_EQ(fileBytes(inWorkspace("intro_asset/data.xml/inner")), "kept");
}
