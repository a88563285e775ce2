// The policy delegate: it decides which navigations happen.
#pragma once

#import <AppKit/AppKit.h>

@class WebFrame;
@class WebView;

/// What made the page navigate.
typedef NS_ENUM(NSInteger, WebNavigationType) {
  WebNavigationTypeLinkClicked,
  WebNavigationTypeFormSubmitted,
  WebNavigationTypeBackForward,
  WebNavigationTypeReload,
  WebNavigationTypeFormResubmitted,
  WebNavigationTypeOther
};

// Keys of the action information.

/// NSNumber: WebNavigationType.
extern NSString *const WebActionNavigationTypeKey;
/// NSNumber: 0 left, 1 right, 2 middle, as NSEvent counts them; -1 when no mouse button was used.
extern NSString *const WebActionButtonKey;
/// NSNumber: the modifier flags of NSEvent.
extern NSString *const WebActionModifierFlagsKey;
/// NSURL: where the navigation leads.
extern NSString *const WebActionOriginalURLKey;

/// Takes the answer to one question. It may be answered later; the first answer counts. Dropped
/// without an answer, it ignores the navigation. Main thread.
@protocol WebPolicyDecisionListener <NSObject>
- (void)use;
- (void)download;
- (void)ignore;
@end

/// Every method is optional; what the delegate does not implement is allowed.
@protocol WebPolicyDelegate <NSObject>
@optional

/// Before each navigation, of the main frame and of subframes alike; `frame` is always the main
/// frame.
- (void)webView:(WebView *)webView
    decidePolicyForNavigationAction:(NSDictionary *)actionInformation
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener;

/// Before a page opens a new window. Without this method the question goes to
/// -webView:createWebViewWithRequest: of the UI delegate.
- (void)webView:(WebView *)webView
    decidePolicyForNewWindowAction:(NSDictionary *)actionInformation
                           request:(NSURLRequest *)request
                      newFrameName:(NSString *)frameName
                  decisionListener:(id<WebPolicyDecisionListener>)listener;

/// Before content is shown. Without this method, types that a page cannot show are ignored.
- (void)webView:(WebView *)webView
    decidePolicyForMIMEType:(NSString *)type
                    request:(NSURLRequest *)request
                      frame:(WebFrame *)frame
           decisionListener:(id<WebPolicyDecisionListener>)listener;

@end
