// The frame of a web view: what loads a page. There is one, the main frame.
#pragma once

#import <AppKit/AppKit.h>

@class WebView;

/// Made and owned by its view. It outlives the view harmlessly: its methods then do nothing.
/// Main thread only.
@interface WebFrame : NSObject {
  WebView *webView_;
}

/// The view; nil once the view is gone.
- (WebView *)webView;
/// The frame's name; empty for the main frame.
- (NSString *)name;

/// Loads the request's URL with GET; asks the policy delegate first. A request without a URL is
/// ignored.
- (void)loadRequest:(NSURLRequest *)request;
/// Shows `string`; relative URLs in it lead from `url`, which may be nil.
- (void)loadHTMLString:(NSString *)string baseURL:(NSURL *)url;
- (void)stopLoading;
- (void)reload;

@end
