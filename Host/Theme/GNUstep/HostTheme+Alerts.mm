// Alert panels: the icon, beside it the title and the message, the buttons at the lower right.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <cmath>

using namespace vireonix::host;

namespace {

constexpr CGFloat kMargin = 20;
constexpr CGFloat kGap = 10;
constexpr CGFloat kIconSide = 48;
constexpr CGFloat kTextLeft = kMargin + kIconSide + 16;
constexpr CGFloat kTextWidth = 380;
constexpr CGFloat kButtonHeight = 28;
constexpr CGFloat kShortestButton = 84;
constexpr CGFloat kTallestMessage = 400;

// The parts of the toolkit's panel, by the names of its instance variables.
struct AlertParts {
  explicit AlertParts(NSWindow *panel)
      : icon([panel valueForKey:@"icoButton"]), title([panel valueForKey:@"titleField"]),
        message([panel valueForKey:@"messageField"]),
        scroll([panel valueForKey:@"scroll"]), buttons{[panel valueForKey:@"defButton"],
                                                       [panel valueForKey:@"altButton"],
                                                       [panel valueForKey:@"othButton"]} {}

  NSButton *icon;
  NSTextField *title;
  NSTextField *message;
  NSScrollView *scroll;
  NSButton *buttons[3];
};

CGFloat textHeight(NSTextField *field) {
  // A cell keeps a margin of its own at both ends of its lines.
  const NSSize room = NSMakeSize(kTextWidth - 8, 10000);
  const NSRect text =
      [[field attributedStringValue] boundingRectWithSize:room
                                                  options:NSStringDrawingUsesLineFragmentOrigin];
  return std::ceil(NSHeight(text)) + 4;
}

// The buttons from the right, the default one first.
void placeButtons(const AlertParts &parts, CGFloat right) {
  CGFloat used = 0;
  for (NSButton *button : parts.buttons) {
    if ([button superview] == nil)
      continue;
    const CGFloat wanted = std::ceil([[button cell] cellSize].width) + 2 * kGap;
    const CGFloat width = std::max(kShortestButton, wanted);
    [button setFrame:NSMakeRect(right - used - width, kMargin, width, kButtonHeight)];
    used += width + kGap;
  }
}

void removeRule(NSView *content) {
  for (NSView *view in [[[content subviews] copy] autorelease])
    if ([view isKindOfClass:[NSBox class]])
      [view removeFromSuperview];
}

void styleText(const AlertParts &parts) {
  [parts.title setFont:[NSFont boldSystemFontOfSize:15]];
  [[parts.title cell] setWraps:YES];
  [parts.message setFont:[NSFont systemFontOfSize:13]];
  [parts.message setAlignment:NSLeftTextAlignment];
  [[parts.message cell] setWraps:YES];
  [[parts.message cell] setLineBreakMode:NSLineBreakByWordWrapping];
}

void placeIcon(NSButton *icon, CGFloat top) {
  NSImage *picture = [[[NSApp applicationIconImage] copy] autorelease];
  [picture setScalesWhenResized:YES];
  [picture setSize:NSMakeSize(kIconSide, kIconSide)];
  [icon setImage:picture];
  [icon setTitle:@""];
  [icon setImagePosition:NSImageOnly];
  [icon setBordered:NO];
  [icon setFrame:NSMakeRect(kMargin, top - kIconSide, kIconSide, kIconSide)];
}

Replacement<void> sizeToFit;

// The toolkit's layout stays for messages too long for a panel: it scrolls them.
void layOut(id receiver, SEL) {
  NSWindow *panel = receiver;
  const AlertParts parts(panel);
  styleText(parts);
  const CGFloat titleHeight = textHeight(parts.title);
  const CGFloat messageHeight = textHeight(parts.message);
  if (messageHeight > kTallestMessage) {
    sizeToFit(receiver);
    return;
  }
  NSView *content = [panel contentView];
  removeRule(content);
  [parts.scroll removeFromSuperview];
  [content addSubview:parts.message];
  const CGFloat width = kTextLeft + kTextWidth + kMargin;
  const CGFloat textFloor = kMargin + kButtonHeight + kMargin;
  const CGFloat textSize = std::max(titleHeight + kGap + messageHeight, kIconSide);
  const CGFloat top = textFloor + textSize;
  [panel setContentSize:NSMakeSize(width, top + kMargin)];
  [parts.title setFrame:NSMakeRect(kTextLeft, top - titleHeight, kTextWidth, titleHeight)];
  [parts.message setFrame:NSMakeRect(kTextLeft, top - titleHeight - kGap - messageHeight,
                                     kTextWidth, messageHeight)];
  placeIcon(parts.icon, top);
  placeButtons(parts, width - kMargin);
  [content setNeedsDisplay:YES];
}

} // namespace

void vireonix::host::replaceAlertMethods() {
  sizeToFit.install(NSClassFromString(@"GSAlertPanel"), @selector(sizePanelToFit), &layOut);
}
