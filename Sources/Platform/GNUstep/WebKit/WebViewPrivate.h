// What the files of the view share.
#pragma once

#import <WebKit/WebFrame.h>
#import <WebKit/WebView.h>

#include "WebKit/engine/web_page.h"

@class WebViewEngine;

@interface WebView (Private)
/// The engine, made on first use.
- (WebViewEngine *)engine;
/// The page, made on first use; null without a display.
- (vireonix::platform::WebPage *)page;
/// The page if there is one already.
- (vireonix::platform::WebPage *)existingPage;
/// Makes the page and starts its process, unless there is a page already.
- (void)warmUp;
/// Makes this view's page as a window that the page of `opener` opened; null when the view shows a
/// page already.
- (vireonix::platform::WebPage *)openPageFrom:(WebViewEngine *)opener;
@end

@interface WebFrame (Private)
/// `view` owns the frame.
- (id)initWithWebView:(WebView *)view;
/// The view goes.
- (void)detach;
@end
