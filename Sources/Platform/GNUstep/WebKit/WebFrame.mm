#import "WebKit/WebFrame.h"

#import "Bridge/text.h"
#import "WebKit/WebViewPrivate.h"

using vireonix::bridge::utf8;
using vireonix::platform::WebPage;

@implementation WebFrame

- (id)initWithWebView:(WebView *)view {
  self = [super init];
  if (self != nil)
    webView_ = view;
  return self;
}

- (void)detach {
  webView_ = nil;
}

- (WebView *)webView {
  return webView_;
}

- (NSString *)name {
  return @"";
}

- (void)loadRequest:(NSURLRequest *)request {
  NSURL *url = [request URL];
  if (url == nil)
    return;
  if (WebPage *page = [webView_ page])
    page->load(utf8([url absoluteString]));
}

- (void)loadHTMLString:(NSString *)string baseURL:(NSURL *)url {
  if (WebPage *page = [webView_ page])
    page->loadHtml(utf8(string), utf8([url absoluteString]));
}

- (void)stopLoading {
  if (WebPage *page = [webView_ existingPage])
    page->stop();
}

- (void)reload {
  if (WebPage *page = [webView_ existingPage])
    page->reload();
}

@end
