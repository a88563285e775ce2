#import "WebKit/WebDecisionListener.h"

#include <utility>

using vireonix::platform::PolicyAnswer;
using vireonix::platform::PolicyDecision;

@implementation WebDecisionListener

- (id)initWithDecision:(std::shared_ptr<PolicyDecision>)decision {
  self = [super init];
  if (self != nil)
    decision_ = std::move(decision);
  return self;
}

- (void)answer:(PolicyAnswer)answer {
  const std::shared_ptr<PolicyDecision> decision = std::exchange(decision_, nullptr);
  if (decision != nullptr)
    decision->answer(answer);
}

- (void)use {
  [self answer:PolicyAnswer::use];
}

- (void)download {
  [self answer:PolicyAnswer::download];
}

- (void)ignore {
  [self answer:PolicyAnswer::ignore];
}

@end
