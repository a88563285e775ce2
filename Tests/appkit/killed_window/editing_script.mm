#import "editing_script.h"

#include "support/temporary_folder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace vireonix::test {

namespace slider = core::slider;

namespace {

// The preview writes nothing, and takes the most time.
constexpr unsigned kSessionsWithAPreview = 4;

constexpr std::array kTypedKeys = {slider::kText, slider::kSize, slider::kInTime,
                                   slider::kStayTime};
constexpr std::array kChosenKeys = {slider::kStyle, slider::kAlign, slider::kTextAlign,
                                    slider::kTextAnimation, slider::kStartDirection};

std::string documentHead(const std::string &workspace) {
  const core::xml::Tree root =
      core::xml::parse(fileBytes(workspace + "/" + kDocumentFile), core::xml::Mode::Strict);
  return root ? headText(*root) : "";
}

// A slide's file is deleted with it, when it is the only one that has it.
void dropPicture(std::set<std::string> &others, const std::vector<slider::Slide> &slides,
                 const std::string &file) {
  if (std::ranges::count(slides, file, &slider::Slide::backgroundImage) == 1)
    others.erase(file);
}

template <class Items> const auto &anyOf(const Items &items, std::mt19937 &random) {
  return items[random() % std::size(items)];
}

} // namespace

EditingScript::EditingScript(int channel, const std::string &workspace, std::string pictures,
                             unsigned seed)
    : channel_(channel), pictures_(std::move(pictures)), random_(seed), run_(std::to_string(seed)),
      window_(workspace, seed % kSessionsWithAPreview == 0),
      head_(documentHead(workspace)), held_{.slides = window_.slides(),
                                            .others = stateIn(workspace).others} {
  tell("opened " + lineOf({.document = documentText(head_, window_.slides()),
                           .position = positionLine(window_.position()),
                           .others = held_.others}));
  char go = 0;
  if (read(channel_, &go, 1) != 1)
    std::_Exit(5);
}

void EditingScript::tell(const std::string &line) const {
  const std::string bytes = line + "\n";
  for (size_t at = 0; at < bytes.size();) {
    const ssize_t written = write(channel_, bytes.data() + at, bytes.size() - at);
    if (written <= 0)
      std::_Exit(5);
    at += static_cast<size_t>(written);
  }
}

WorkspaceState EditingScript::stateWith(const Held &held) const {
  return {.document = documentText(head_, held.slides),
          .position = positionLine(window_.position()),
          .others = held.others};
}

void EditingScript::change(const std::function<void(Held &)> &held,
                           const std::function<void()> &work) {
  Held next = held_;
  held(next);
  tell("about " + lineOf(stateWith(next)));
  work();
  held_ = std::move(next);
  tell("done");
}

void EditingScript::run(int edits) {
  for (int edit = 0; edit < edits; ++edit)
    @autoreleasepool {
      editAnything();
    }
  const bool isApplied = below(2) == 0;
  tell("about " + lineOf(stateWith(held_)));
  tell(isApplied ? "closing ok" : "closing cancel");
  window_.press(isApplied ? @"btnOK" : @"btnCancel");
  if (!window_.isClosed())
    std::_Exit(6);
  tell("closed");
}

void EditingScript::editAnything() {
  using Edit = void (EditingScript::*)();
  static constexpr std::array<Edit, 16> kEdits = {
      &EditingScript::addSlide,       &EditingScript::addSlide,      &EditingScript::removeSlide,
      &EditingScript::replacePicture, &EditingScript::shareAPicture, &EditingScript::addCaption,
      &EditingScript::addCaption,     &EditingScript::doubleCaption, &EditingScript::removeCaption,
      &EditingScript::editCaption,    &EditingScript::editCaption,   &EditingScript::editCaption,
      &EditingScript::saveAllChoices, &EditingScript::movePosition,  &EditingScript::movePosition,
      &EditingScript::settle};
  (this->*anyOf(kEdits, random_))();
}

size_t EditingScript::showAnySlide() {
  slide_ = below(held_.slides.size());
  window_.showSlide(static_cast<NSInteger>(slide_));
  return slide_;
}

bool EditingScript::showAnyCaption() {
  std::vector<size_t> rows;
  for (size_t row = 0; row < held_.slides.size(); ++row)
    if (!held_.slides[row].textObjects.empty())
      rows.push_back(row);
  if (rows.empty())
    return false;
  slide_ = anyOf(rows, random_);
  caption_ = below(held_.slides[slide_].textObjects.size());
  window_.showSlide(static_cast<NSInteger>(slide_));
  window_.showCaption(static_cast<NSInteger>(caption_));
  return true;
}

std::string EditingScript::newPicture() {
  std::string name = run_ + "-" + std::to_string(made_++) + ".png";
  const std::string file = pictures_ + "/" + name;
  FILE *const out = std::fopen(file.c_str(), "wb");
  const std::string bytes = pictureBytes(name);
  if (out == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), out) != bytes.size())
    std::_Exit(5);
  std::fclose(out);
  return name;
}

std::string EditingScript::anyValue(std::string_view key) {
  constexpr std::array kWords = {"Welcome", "Größe", "it's > all", "日本 語", "\"quoted\""};
  if (key == slider::kText)
    return std::string(anyOf(kWords, random_)) + " " + std::to_string(made_++);
  if (key == slider::kSize)
    return std::to_string(10 + below(50));
  if (key == slider::kStyle)
    return anyOf(std::array{"Fade", "Zoom", "Bounce", "Wave"}, random_);
  if (key == slider::kAlign)
    return anyOf(std::array{"TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"}, random_);
  if (key == slider::kInTime || key == slider::kStayTime)
    return std::to_string(1 + below(199));
  return std::to_string(below(key == slider::kStartDirection ? 8 : 3));
}

void EditingScript::addSlide() {
  size_t row = held_.slides.size();
  if (held_.slides.empty() || below(2) == 0)
    window_.showSlide(-1);
  else
    row = showAnySlide();
  const std::string name = newPicture();
  change(
      [&](Held &held) {
        slider::Slide slide;
        slide.backgroundImage = "intro_asset/" + name;
        held.slides.insert(held.slides.begin() + static_cast<std::ptrdiff_t>(row), slide);
        held.others.insert("intro_asset/" + name);
      }, [&] { window_.addSlide(pictures_ + "/" + name); });
}

void EditingScript::removeSlide() {
  if (held_.slides.size() < 2)
    return;
  const size_t row = showAnySlide();
  change(
      [&](Held &held) {
        dropPicture(held.others, held.slides, *held.slides[row].backgroundImage);
        held.slides.erase(held.slides.begin() + static_cast<std::ptrdiff_t>(row));
      }, [&] { window_.press(@"btnRemove"); });
}

void EditingScript::replacePicture() {
  if (held_.slides.empty())
    return;
  const size_t row = showAnySlide();
  const std::string name = newPicture();
  change(
      [&](Held &held) {
        held.others.insert(name);
        dropPicture(held.others, held.slides, *held.slides[row].backgroundImage);
        held.slides[row].backgroundImage = name;
      }, [&] { window_.replacePicture(pictures_ + "/" + name); });
}

void EditingScript::shareAPicture() {
  if (held_.slides.empty())
    return;
  const size_t row = showAnySlide();
  const std::string file = *anyOf(held_.slides, random_).backgroundImage;
  change([&](Held &held) { held.slides[row].backgroundImage = file; },
         [&] { window_.type(slider::kBackgroundImage, file); });
}

void EditingScript::addCaption() {
  if (held_.slides.empty())
    return;
  const size_t row = showAnySlide();
  for (const std::string_view key : kTypedKeys)
    window_.type(key, anyValue(key));
  for (const std::string_view key : kChosenKeys)
    window_.choose(key, anyValue(key), false);
  change(
      [&](Held &held) {
        slider::TextObject caption;
        for (const std::string_view key : captionKeys())
          caption.set(key, window_.control(key));
        held.slides[row].textObjects.push_back(std::move(caption));
      }, [&] { window_.press(@"btnContentAdd"); });
}

void EditingScript::doubleCaption() {
  if (!showAnyCaption())
    return;
  change(
      [&](Held &held) {
        auto &captions = held.slides[slide_].textObjects;
        const slider::TextObject copy = captionIn(held);
        captions.insert(captions.begin() + static_cast<std::ptrdiff_t>(caption_), copy);
      }, [&] { window_.press(@"btnContentAdd"); });
}

void EditingScript::removeCaption() {
  if (!showAnyCaption())
    return;
  change(
      [&](Held &held) {
        auto &captions = held.slides[slide_].textObjects;
        captions.erase(captions.begin() + static_cast<std::ptrdiff_t>(caption_));
      }, [&] { window_.press(@"btnContentRemove"); });
}

void EditingScript::editCaption() {
  if (!showAnyCaption())
    return;
  for (size_t edits = 1 + below(8); edits > 0; --edits)
    editOneValue();
}

void EditingScript::editOneValue() {
  const std::string_view key = anyOf(captionKeys(), random_);
  std::string value = key == slider::kColor ? "" : anyValue(key);
  if (key == slider::kColor)
    value = anyOf(std::array{"#FF0000", "#00FF00", "#0000FF", "#FFFFFF"}, random_);
  change([&](Held &held) { captionIn(held).set(key, value); },
         [&] {
           if (key == slider::kColor)
             window_.chooseColor(value);
           else if (std::ranges::find(kTypedKeys, key) != kTypedKeys.end())
             window_.type(key, value);
           else
             window_.choose(key, value, true);
         });
}

void EditingScript::saveAllChoices() {
  if (!showAnyCaption())
    return;
  for (const std::string_view key : kChosenKeys)
    window_.choose(key, anyValue(key), false);
  change(
      [&](Held &held) {
        for (const std::string_view key : kChosenKeys)
          captionIn(held).set(key, window_.control(key));
      }, [&] { window_.press(@"btnContentSave"); });
}

void EditingScript::movePosition() {
  const std::string number = std::to_string(below(30)) + "." + std::to_string(below(10));
  switch (below(5)) {
  case 0:
    window_.typePosition(
        anyOf(std::array{@"txtLeft", @"txtTop", @"txtRight", @"txtBottom"}, random_), number);
    break;
  case 1:
    window_.slideTransparency(static_cast<double>(below(101)));
    break;
  case 2:
    window_.chooseLayer(static_cast<NSInteger>(below(2)));
    break;
  case 3:
    window_.press(@"btnDefault");
    break;
  default:
    window_.dragBox(static_cast<double>(below(20)) - 10, static_cast<double>(below(20)) - 10);
  }
  tell("position " + positionLine(window_.position()));
}

void EditingScript::settle() {
  change([](Held &) {}, [&] { window_.press(@"btnSave"); });
  window_.waitForPositionFile();
  tell("settled");
}

} // namespace vireonix::test
