// The load, resource, user-interface and download delegates of a web view. Every method is
// optional; all are called on the main thread.
#pragma once

#import <AppKit/AppKit.h>

@class WebDataSource;
@class WebFrame;
@class WebView;

/// Hears of the main frame's loads. A load ends in exactly one of "finish" and "fail".
@protocol WebFrameLoadDelegate <NSObject>
@optional
- (void)webView:(WebView *)sender didStartProvisionalLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender
    didReceiveServerRedirectForProvisionalLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didCommitLoadForFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didReceiveTitle:(NSString *)title forFrame:(WebFrame *)frame;
- (void)webView:(WebView *)sender didFinishLoadForFrame:(WebFrame *)frame;
/// The load failed before the page appeared.
- (void)webView:(WebView *)sender
    didFailProvisionalLoadWithError:(NSError *)error
                           forFrame:(WebFrame *)frame;
/// The load failed after the page had begun to appear.
- (void)webView:(WebView *)sender didFailLoadWithError:(NSError *)error forFrame:(WebFrame *)frame;
@end

/// Hears of everything that a page loads. Data sources are nil: the engine offers none.
@protocol WebResourceLoadDelegate <NSObject>
@optional
/// What stands for the resource in the other methods, nil included; without this method, a number.
- (id)webView:(WebView *)sender
    identifierForInitialRequest:(NSURLRequest *)request
                 fromDataSource:(WebDataSource *)dataSource;
- (void)webView:(WebView *)sender
                          resource:(id)identifier
    didFinishLoadingFromDataSource:(WebDataSource *)dataSource;
- (void)webView:(WebView *)sender
                   resource:(id)identifier
    didFailLoadingWithError:(NSError *)error
             fromDataSource:(WebDataSource *)dataSource;
@end

/// Gives the page what lies outside its view.
@protocol WebUIDelegate <NSObject>
@optional
/// A page asks for a new window. The view that is answered loads the request itself, under its own
/// policy delegate; it is not retained beyond the call. Nil refuses.
- (WebView *)webView:(WebView *)sender createWebViewWithRequest:(NSURLRequest *)request;
/// The view made for a new window is ready to be shown.
- (void)webViewShow:(WebView *)sender;
/// A page asks to close its own window.
- (void)webViewClose:(WebView *)sender;
@end

/// Marks the object that -setDownloadDelegate: takes. Downloads are refused.
@protocol WebDownloadDelegate <NSObject>
@end
