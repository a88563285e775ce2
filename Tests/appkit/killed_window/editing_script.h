// A random editing session in a real settings window that tells, before each change, what the
// workspace will hold then.
#pragma once

#include "told_state.h"
#include "window_editor.h"

#include <functional>
#include <random>

namespace vireonix::test {

/// The lines that go to the test: "opened STATE" (then the test answers a byte), "about STATE" and
/// "done" around each change, "position LINE" when another one may be written from now on,
/// "settled" when the last of them is in the file, "closing ok" or "closing cancel", "closed".
class EditingScript {
public:
  /// `pictures` is a folder outside of the workspace for the pictures to choose from.
  EditingScript(int channel, const std::string& workspace, std::string pictures, unsigned seed);

  /// `edits` many, then OK or Cancel.
  void run(int edits);

private:
  struct Held {
    std::vector<core::slider::Slide> slides;
    std::set<std::string> others;
  };

  void tell(const std::string& line) const;
  [[nodiscard]] WorkspaceState stateWith(const Held& held) const;
  [[nodiscard]] size_t below(size_t bound) { return random_() % bound; }
  /// Tells what the workspace will hold, makes it so, and tells that.
  void change(const std::function<void(Held&)>& held, const std::function<void()>& work);

  void editAnything();
  void addSlide();
  void removeSlide();
  void replacePicture();
  void shareAPicture();
  void addCaption();
  void doubleCaption();
  void removeCaption();
  void editCaption();
  void editOneValue();
  void saveAllChoices();
  void movePosition();
  void settle();

  /// Shows any slide; answers its row.
  size_t showAnySlide();
  /// Shows any caption of those; false when there is none.
  bool showAnyCaption();
  std::string newPicture();
  std::string anyValue(std::string_view key);
  core::slider::TextObject& captionIn(Held& held) const {
    return held.slides[slide_].textObjects[caption_];
  }

  int channel_;
  std::string pictures_;
  std::mt19937 random_;
  std::string run_; ///< Makes names new in every session.
  WindowEditor window_;
  std::string head_; ///< Of the document.
  Held held_;
  size_t slide_ = 0;
  size_t caption_ = 0;
  int made_ = 0;
};

} // namespace vireonix::test
