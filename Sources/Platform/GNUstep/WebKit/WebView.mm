#import "WebKit/WebView.h"

#import "Bridge/text.h"
#import "WebKit/WebPolicyDelegate.h"
#import "WebKit/WebViewEngine.h"
#import "WebKit/WebViewPrivate.h"

using vireonix::bridge::string;
using vireonix::bridge::utf8;
using vireonix::platform::WebPage;

NSString *const WebActionNavigationTypeKey = @"WebActionNavigationTypeKey";
NSString *const WebActionButtonKey = @"WebActionButtonKey";
NSString *const WebActionModifierFlagsKey = @"WebActionModifierFlagsKey";
NSString *const WebActionOriginalURLKey = @"WebActionOriginalURLKey";

static const double kScriptSeconds = 5;

@implementation WebView

@synthesize downloadDelegate = downloadDelegate_;
@synthesize resourceLoadDelegate = resourceLoadDelegate_;
@synthesize UIDelegate = UIDelegate_;
@synthesize policyDelegate = policyDelegate_;
@synthesize frameLoadDelegate = frameLoadDelegate_;

- (id)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil)
    mainFrame_ = [[WebFrame alloc] initWithWebView:self];
  return self;
}

- (id)initWithFrame:(NSRect)frame frameName:(NSString *)frameName groupName:(NSString *)groupName {
  return [self initWithFrame:frame];
}

- (id)initWithCoder:(NSCoder *)coder {
  self = [super initWithCoder:coder];
  if (self != nil)
    mainFrame_ = [[WebFrame alloc] initWithWebView:self];
  return self;
}

- (void)dealloc {
  [self close];
  [mainFrame_ detach];
  [mainFrame_ release];
  [super dealloc];
}

- (void)close {
  [engine_ close];
  [engine_ release];
  engine_ = nil;
  [self setNeedsDisplay:YES];
}

- (WebFrame *)mainFrame {
  return mainFrame_;
}

- (NSString *)mainFrameURL {
  const WebPage *page = [self existingPage];
  return page == nullptr ? @"" : string(page->url());
}

- (void)setMainFrameURL:(NSString *)url {
  [mainFrame_ loadRequest:[NSURLRequest requestWithURL:[NSURL URLWithString:url]]];
}

- (NSString *)mainFrameTitle {
  const WebPage *page = [self existingPage];
  return page == nullptr ? @"" : string(page->title());
}

- (BOOL)isLoading {
  const WebPage *page = [self existingPage];
  return page != nullptr && page->isLoading();
}

- (IBAction)stopLoading:(id)sender {
  [mainFrame_ stopLoading];
}

- (IBAction)reload:(id)sender {
  [mainFrame_ reload];
}

- (NSString *)stringByEvaluatingJavaScriptFromString:(NSString *)script {
  WebPage *page = [self page];
  if (page == nullptr)
    return @"";
  return string(page->evaluate(utf8(script), kScriptSeconds).value_or(std::string()));
}

@end

@implementation WebView (Private)

- (WebViewEngine *)engine {
  if (engine_ == nil)
    engine_ = [[WebViewEngine alloc] initWithView:self opener:nil];
  return engine_;
}

- (WebPage *)page {
  return [[self engine] page];
}

- (WebPage *)existingPage {
  return [engine_ page];
}

- (void)warmUp {
  if (engine_ != nil)
    return;
  if (WebPage *page = [self page])
    page->warmUp();
}

- (WebPage *)openPageFrom:(WebViewEngine *)opener {
  const WebPage *existing = [self existingPage];
  if (existing != nullptr && !existing->url().empty())
    return nullptr;
  // What was made ahead and shows nothing yet makes room.
  [self close];
  engine_ = [[WebViewEngine alloc] initWithView:self opener:opener];
  return [engine_ page];
}

@end
