#import "Bridge/text.h"
#import "WebKit/WebDecisionListener.h"
#import "WebKit/WebKit.h"
#import "WebKit/WebViewEngine.h"
#import "WebKit/WebViewPrivate.h"

#include <utility>

using namespace vireonix::platform;
using vireonix::bridge::string;

namespace {

constexpr NSInteger kNoButton = -1;
// The code of macOS' WebKitErrorDomain for a load that the policy delegate ended.
constexpr NSInteger kLoadInterruptedByPolicy = 102;

NSInteger buttonNumber(MouseButton button) {
  switch (button) {
  case MouseButton::left:
    return 0;
  case MouseButton::right:
    return 1;
  case MouseButton::middle:
    return 2;
  case MouseButton::none:
    break;
  }
  return kNoButton;
}

NSUInteger modifierFlags(unsigned modifiers) {
  return ((modifiers & kShiftKey) != 0 ? NSShiftKeyMask : 0U) |
         ((modifiers & kControlKey) != 0 ? NSControlKeyMask : 0U) |
         ((modifiers & kAlternateKey) != 0 ? NSAlternateKeyMask : 0U) |
         ((modifiers & kCommandKey) != 0 ? NSCommandKeyMask : 0U);
}

NSURLRequest *urlRequest(const std::string &url) {
  return [NSURLRequest requestWithURL:[NSURL URLWithString:string(url)]];
}

NSDictionary *actionInformation(const PolicyRequest &request, NSURL *url) {
  NSMutableDictionary *information = [NSMutableDictionary dictionary];
  [information setObject:@(request.navigationType) forKey:WebActionNavigationTypeKey];
  [information setObject:@(buttonNumber(request.button)) forKey:WebActionButtonKey];
  [information setObject:@(modifierFlags(request.modifiers)) forKey:WebActionModifierFlagsKey];
  if (url != nil)
    [information setObject:url forKey:WebActionOriginalURLKey];
  return information;
}

NSError *loadError(const LoadFailure &failure) {
  NSDictionary *information = @{
    NSLocalizedDescriptionKey : string(failure.message),
    @"NSErrorFailingURLStringKey" : string(failure.url)
  };
  NSString *domain = NSURLErrorDomain;
  NSInteger code = NSURLErrorUnknown;
  switch (failure.cause) {
  case LoadFailure::Cause::cancelled:
    code = NSURLErrorCancelled;
    break;
  case LoadFailure::Cause::fileMissing:
    code = NSURLErrorFileDoesNotExist;
    break;
  case LoadFailure::Cause::refusedByPolicy:
    domain = @"WebKitErrorDomain";
    code = kLoadInterruptedByPolicy;
    break;
  case LoadFailure::Cause::other:
    break;
  }
  return [NSError errorWithDomain:domain code:code userInfo:information];
}

} // namespace

@implementation WebViewEngine (Delegates)

- (void)decide:(const PolicyRequest &)request decision:(std::shared_ptr<PolicyDecision>)decision {
  WebView *view = [self view];
  id<WebPolicyDelegate> delegate = [view policyDelegate];
  WebDecisionListener *listener =
      [[[WebDecisionListener alloc] initWithDecision:std::move(decision)] autorelease];
  NSURLRequest *navigation = urlRequest(request.url);
  NSDictionary *information = actionInformation(request, [navigation URL]);
  const PolicyRequest::Kind kind = request.kind;
  if (kind == PolicyRequest::Kind::navigation &&
      [delegate respondsToSelector:@selector
                (webView:decidePolicyForNavigationAction:request:frame:decisionListener:)])
    [delegate webView:view decidePolicyForNavigationAction:information request:navigation
                                  frame:[view mainFrame]
                       decisionListener:listener];
  else if (kind == PolicyRequest::Kind::newWindow &&
           [delegate respondsToSelector:@selector
                     (webView:
                         decidePolicyForNewWindowAction:request:newFrameName:decisionListener:)])
    [delegate webView:view decidePolicyForNewWindowAction:information request:navigation
                          newFrameName:string(request.frameName)
                      decisionListener:listener];
  else if (kind == PolicyRequest::Kind::content &&
           [delegate respondsToSelector:@selector
                     (webView:decidePolicyForMIMEType:request:frame:decisionListener:)])
    [delegate webView:view decidePolicyForMIMEType:string(request.mimeType) request:navigation
                          frame:[view mainFrame]
               decisionListener:listener];
  else if (request.canBeShown)
    [listener use];
}

- (void)loadStepped:(LoadStep)step {
  WebView *view = [self view];
  WebFrame *frame = [view mainFrame];
  id<WebFrameLoadDelegate> delegate = [view frameLoadDelegate];
  switch (step) {
  case LoadStep::started:
    if ([delegate respondsToSelector:@selector(webView:didStartProvisionalLoadForFrame:)])
      [delegate webView:view didStartProvisionalLoadForFrame:frame];
    break;
  case LoadStep::redirected:
    if ([delegate respondsToSelector:@selector(webView:
                                         didReceiveServerRedirectForProvisionalLoadForFrame:)])
      [delegate webView:view didReceiveServerRedirectForProvisionalLoadForFrame:frame];
    break;
  case LoadStep::committed:
    if ([delegate respondsToSelector:@selector(webView:didCommitLoadForFrame:)])
      [delegate webView:view didCommitLoadForFrame:frame];
    break;
  case LoadStep::finished:
    if ([delegate respondsToSelector:@selector(webView:didFinishLoadForFrame:)])
      [delegate webView:view didFinishLoadForFrame:frame];
    break;
  }
}

- (void)loadFailed:(const LoadFailure &)failure {
  WebView *view = [self view];
  id<WebFrameLoadDelegate> delegate = [view frameLoadDelegate];
  NSError *error = loadError(failure);
  if (failure.committed) {
    if ([delegate respondsToSelector:@selector(webView:didFailLoadWithError:forFrame:)])
      [delegate webView:view didFailLoadWithError:error forFrame:[view mainFrame]];
  } else if ([delegate respondsToSelector:@selector(webView:
                                              didFailProvisionalLoadWithError:forFrame:)]) {
    [delegate webView:view didFailProvisionalLoadWithError:error forFrame:[view mainFrame]];
  }
}

- (void)titleChanged:(const std::string &)title {
  WebView *view = [self view];
  id<WebFrameLoadDelegate> delegate = [view frameLoadDelegate];
  if ([delegate respondsToSelector:@selector(webView:didReceiveTitle:forFrame:)])
    [delegate webView:view didReceiveTitle:string(title) forFrame:[view mainFrame]];
}

// What the delegate calls the resource, which may be nil.
- (id)identifierForResource:(const std::string &)url {
  id<WebResourceLoadDelegate> delegate = [[self view] resourceLoadDelegate];
  if (![delegate respondsToSelector:@selector(webView:identifierForInitialRequest:fromDataSource:)])
    return @(++resources_);
  return [delegate webView:[self view] identifierForInitialRequest:urlRequest(url)
                   fromDataSource:nil];
}

- (void)resource:(uint64_t)resource
         stepped:(ResourceStep)step
             url:(const std::string &)url
           error:(const std::string &)error {
  WebView *view = [self view];
  id<WebResourceLoadDelegate> delegate = [view resourceLoadDelegate];
  NSNumber *key = @(resource);
  if (step == ResourceStep::started) {
    if (id identifier = [self identifierForResource:url])
      [resourceIdentifiers_ setObject:identifier forKey:key];
    return;
  }
  id identifier = [[[resourceIdentifiers_ objectForKey:key] retain] autorelease];
  [resourceIdentifiers_ removeObjectForKey:key];
  if (step == ResourceStep::finished &&
      [delegate respondsToSelector:@selector(webView:resource:didFinishLoadingFromDataSource:)])
    [delegate webView:view resource:identifier didFinishLoadingFromDataSource:nil];
  if (step == ResourceStep::failed &&
      [delegate respondsToSelector:@selector(webView:
                                            resource:didFailLoadingWithError:fromDataSource:)]) {
    LoadFailure failure;
    failure.url = url;
    failure.message = error;
    [delegate webView:view resource:identifier didFailLoadingWithError:loadError(failure)
                 fromDataSource:nil];
  }
}

- (WebPage *)openWindow:(const std::string &)url {
  id<WebUIDelegate> delegate = [[self view] UIDelegate];
  if (![delegate respondsToSelector:@selector(webView:createWebViewWithRequest:)])
    return nullptr;
  NSURLRequest *request = urlRequest(url);
  WebView *opened = [delegate webView:[self view] createWebViewWithRequest:request];
  if (WebPage *page = [opened openPageFrom:self])
    return page;
  // The view has a page already, which cannot become the opened one: it loads by itself.
  [[opened mainFrame] loadRequest:request];
  return nullptr;
}

- (void)windowIsReady {
  id<WebUIDelegate> delegate = [[self view] UIDelegate];
  if ([delegate respondsToSelector:@selector(webViewShow:)])
    [delegate webViewShow:[self view]];
}

- (void)windowWantsToClose {
  id<WebUIDelegate> delegate = [[self view] UIDelegate];
  if ([delegate respondsToSelector:@selector(webViewClose:)])
    [delegate webViewClose:[self view]];
}

@end
