#import "support/settings_session.h"

#import "Bridge/text.h"
#import "support/fingerprint.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace vireonix::test {
namespace {

constexpr std::string_view kDocument =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><main version=\"2\">"
    "<define_animation_Style><style Name=\"Fade\"/><style Name=\"Slide\"/>"
    "</define_animation_Style><data>"
    "<slide Background_image=\"intro_asset/a.png\"><text set_animation_style=\"Fade\" Align=\"C\" "
    "In_Time=\"0\" Stay_Time=\"20\" Text_Align=\"0\" Text_Animation_LetterByLetter=\"0\" "
    "Animation_Start_Direction=\"0\"><text><![CDATA[<b><font size=\"24\" color=\"#FF0000\">"
    "Welcome</font></b>]]></text></text></slide>"
    "<slide Background_image=\"b.png\"/></data></main>";

void fill(const TemporaryFolder &folder) {
  folder.write("workspace/intro_asset/data.xml", kDocument);
  folder.write("workspace/intro_asset/a.png", "not really a picture");
  folder.write("workspace/b.png", "nor this");
  folder.write("workspace/settings.dat", "5.0\n6.0\n7.0\n8.0\n80.0\n1");
  folder.write("workspace/deep/.hidden", "hidden");
  fs::permissions(folder.write("workspace/tool.sh", "#!/bin/sh\n"), fs::perms::owner_all);
  fs::create_symlink("b.png", folder.at("workspace/link.png"));
}

} // namespace

SettingsSession::SettingsSession(bool modal) {
  fill(folder_);
  controller_ = [[PluginSettingsDelegate alloc] initWithLanguageCode:@"en"
                                                          bundlePath:@VIREONIX_BUNDLE];
  [controller_ setWorkSpace:bridge::pathString(workspace())];
  [controller_ setModalMode:modal];
}

SettingsSession::~SettingsSession() {
  releaseController();
}

std::string SettingsSession::inWorkspace(const std::string &relative) const {
  return workspace() + "/" + relative;
}

std::string SettingsSession::backupFolder() const {
  return bridge::path(NSTemporaryDirectory()) + "/vireonix";
}

std::string SettingsSession::fingerprint() const {
  return treeFingerprint(workspace());
}

void SettingsSession::releaseController() {
  [controller_ release];
  controller_ = nil;
}

} // namespace vireonix::test
