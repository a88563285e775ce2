// Everything of the web view for GNUstep: the shape of macOS' WebView, on WebKitGTK. What compiles
// against this compiles against macOS' <WebKit/WebKit.h>.
#pragma once

#import <WebKit/WebDelegates.h>
#import <WebKit/WebFrame.h>
#import <WebKit/WebPolicyDelegate.h>
#import <WebKit/WebView.h>
