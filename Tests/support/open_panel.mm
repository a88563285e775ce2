#import "support/open_panel.h"

#import "Bridge/text.h"

#include <objc/runtime.h>

namespace vireonix::test {
namespace {

NSInteger answer = 0;
NSString *chosen = nil;
NSOpenPanel *answered = nil;

NSInteger answerAtOnce(id panel, SEL) {
  answered = panel;
  return answer;
}

NSArray *chosenUrls(id, SEL) {
  return @[ [NSURL fileURLWithPath:chosen] ];
}

IMP replace(SEL selector, IMP implementation) {
  return method_setImplementation(class_getInstanceMethod([NSOpenPanel class], selector),
                                  implementation);
}

} // namespace

OpenPanelAnswer::OpenPanelAnswer(NSInteger button, const std::string &file)
    : runModal_(replace(@selector(runModal), reinterpret_cast<IMP>(answerAtOnce))),
      urls_(replace(@selector(URLs), reinterpret_cast<IMP>(chosenUrls))) {
  answer = button;
  chosen = [bridge::pathString(file) retain];
}

OpenPanelAnswer::~OpenPanelAnswer() {
  replace(@selector(runModal), runModal_);
  replace(@selector(URLs), urls_);
  [chosen release];
  chosen = nil;
  [answered orderOut:nil];
  answered = nil;
}

NSOpenPanel *OpenPanelAnswer::panel() const {
  return answered;
}

} // namespace vireonix::test
