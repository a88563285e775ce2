// A view that shows a web page.
//
// The page runs in WebKitGTK's own processes, started when the view comes into a window, or by its
// first load; its pixels are painted by this view, and this view's events are handed to it. A page
// that is not visible does not animate.
// Without a display the view stays blank and says so. Pages from files may read neighbouring files.
// Nothing is kept on disk. Script dialogs are answered at once, permission and file requests
// refused. Main thread only.
#pragma once

#import <AppKit/AppKit.h>

@class WebFrame;
@class WebViewEngine;
@protocol WebDownloadDelegate;
@protocol WebFrameLoadDelegate;
@protocol WebPolicyDelegate;
@protocol WebResourceLoadDelegate;
@protocol WebUIDelegate;

@interface WebView : NSView {
@private
  WebFrame *mainFrame_;
  WebViewEngine *engine_;
  NSTrackingRectTag trackingRect_;
  id<WebDownloadDelegate> downloadDelegate_;
  id<WebResourceLoadDelegate> resourceLoadDelegate_;
  id<WebUIDelegate> UIDelegate_;
  id<WebPolicyDelegate> policyDelegate_;
  id<WebFrameLoadDelegate> frameLoadDelegate_;
}

- (id)initWithFrame:(NSRect)frame;
/// The names are those of the page's window and are not used.
- (id)initWithFrame:(NSRect)frame frameName:(NSString *)frameName groupName:(NSString *)groupName;

/// Ends the page and everything that belongs to it; the view stays blank. A later load starts over.
- (void)close;

- (WebFrame *)mainFrame;
/// The URL of the page shown or being loaded; empty when there is none.
- (NSString *)mainFrameURL;
- (void)setMainFrameURL:(NSString *)url;
- (NSString *)mainFrameTitle;
- (BOOL)isLoading;

- (IBAction)stopLoading:(id)sender;
- (IBAction)reload:(id)sender;

/// The result of `script` as text; empty when it fails, answers nothing, or takes over 5 seconds.
/// Delegates may be called meanwhile.
- (NSString *)stringByEvaluatingJavaScriptFromString:(NSString *)script;

/// Delegates are not retained; clear them before they go.
@property(nonatomic, assign) id<WebDownloadDelegate> downloadDelegate;
@property(nonatomic, assign) id<WebResourceLoadDelegate> resourceLoadDelegate;
@property(nonatomic, assign) id<WebUIDelegate> UIDelegate;
@property(nonatomic, assign) id<WebPolicyDelegate> policyDelegate;
@property(nonatomic, assign) id<WebFrameLoadDelegate> frameLoadDelegate;

@end
