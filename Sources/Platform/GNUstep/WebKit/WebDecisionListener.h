// The listener that a policy delegate answers through.
#pragma once

#import <WebKit/WebPolicyDelegate.h>

#include "WebKit/engine/web_page.h"

@interface WebDecisionListener : NSObject <WebPolicyDecisionListener> {
@private
  std::shared_ptr<vireonix::platform::PolicyDecision> decision_;
}

/// The answer "ignore" is given when the listener goes without another one.
- (id)initWithDecision:(std::shared_ptr<vireonix::platform::PolicyDecision>)decision;

@end
