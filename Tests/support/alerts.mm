#import "support/alerts.h"

#import "Bridge/text.h"

#include <deque>
#include <objc/runtime.h>

namespace vireonix::test {
namespace {

using RunModal = NSInteger (*)(id, SEL);

std::deque<NSInteger> pendingAnswers;
std::vector<ShownAlert> shownAlerts;
RunModal realRunModal = nullptr;

NSInteger answerAtOnce(id alert, SEL) {
  ShownAlert shown{bridge::utf8([alert messageText]), bridge::utf8([alert informativeText]), {}};
  for (NSButton *button in [alert buttons])
    shown.buttons.push_back(bridge::utf8([button title]));
  shownAlerts.push_back(shown);
  if (pendingAnswers.empty())
    return NSAlertFirstButtonReturn;
  const NSInteger answer = pendingAnswers.front();
  pendingAnswers.pop_front();
  return answer;
}

Method runModalMethod() {
  return class_getInstanceMethod([NSAlert class], @selector(runModal));
}

} // namespace

AlertAnswers::AlertAnswers(std::vector<NSInteger> answers) {
  pendingAnswers.assign(answers.begin(), answers.end());
  shownAlerts.clear();
  realRunModal = reinterpret_cast<RunModal>(
      method_setImplementation(runModalMethod(), reinterpret_cast<IMP>(answerAtOnce)));
}

AlertAnswers::~AlertAnswers() {
  method_setImplementation(runModalMethod(), reinterpret_cast<IMP>(realRunModal));
}

const std::vector<ShownAlert> &AlertAnswers::shown() const {
  return shownAlerts;
}

} // namespace vireonix::test
