#import "Class/PluginSettingsDelegate.h"

#import "Bridge/text.h"
#import "Platform/desktop.h"

using vireonix::bridge::path;

static NSString *const kPreviewPage = @"index.html";
static NSString *const kFileScheme = @"file";
// A page may ask for windows without end; none of them is ever shown.
static const NSUInteger kHiddenWebViewLimit = 8;

@implementation PluginSettingsDelegate (Preview)

- (void)backupWorkSpace {
  (void)backup.take(path(workSpace), path(backupSettingPath));
}

- (void)restoreWorkSpace {
  // A save that is still on its way must not change what was put back.
  @synchronized(self) {
    isReverted = YES;
  }
  (void)backup.restore(path(workSpace), path(backupSettingPath));
  [self removeBackupWorkSpace];
}

- (void)removeBackupWorkSpace {
  (void)backup.remove(path(backupSettingPath));
}

- (void)onRepeatTimer:(NSTimer *)timer {
  if (isChange.exchange(false))
    [self reloadPreview];
}

- (void)reloadPreview {
  [iWebView stopLoading:self];
  NSString *page = [workSpace stringByAppendingPathComponent:kPreviewPage];
  if (page == nil)
    return;
  NSURLRequest *request = [NSURLRequest requestWithURL:[NSURL fileURLWithPath:page]];
  [[iWebView mainFrame] loadRequest:request];
}

- (void)webView:(WebView *)sender
    decidePolicyForNavigationAction:(NSDictionary *)actionInformation
                            request:(NSURLRequest *)request
                              frame:(WebFrame *)frame
                   decisionListener:(id<WebPolicyDecisionListener>)listener {
  if (request == nil)
    return;
  @try {
    if ([[[request URL] scheme] isEqualToString:kFileScheme]) {
      [listener use];
    } else {
      [listener ignore];
      vireonix::platform::openWithDefaultApplication([request URL]);
    }
  } @catch (NSException *exception) {
    NSLog(@"Web action exception: %@", exception);
  }
}

- (WebView *)webView:(WebView *)sender createWebViewWithRequest:(NSURLRequest *)request {
  WebView *view = [[[WebView alloc] initWithFrame:NSZeroRect] autorelease];
  [view setPolicyDelegate:self];
  if (hiddenWebViews == nil)
    hiddenWebViews = [[NSMutableArray alloc] init];
  if ([hiddenWebViews count] == kHiddenWebViewLimit) {
    WebView *oldest = [hiddenWebViews objectAtIndex:0];
    [oldest setPolicyDelegate:nil];
    [oldest close];
    [hiddenWebViews removeObjectAtIndex:0];
  }
  [hiddenWebViews addObject:view];
  return view;
}

@end
