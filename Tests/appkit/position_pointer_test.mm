#import "Class/ObjectView.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

// Records where the canvas wants which pointer.
std::vector<std::pair<NSRect, NSCursor *>> pointers;

} // namespace

@interface PointerBox : ObjectView
@end

@implementation PointerBox
- (void)addCursorRect:(NSRect)rect cursor:(NSCursor *)cursor {
  pointers.emplace_back(rect, cursor);
}
@end

TEST(PositionCanvas, ThePointerSaysWhatAPressMoves) {
  pointers.clear();
  PointerBox *box = [[[PointerBox alloc] initWithFrame:NSMakeRect(0, 0, 120, 40)] autorelease];
  [box resetCursorRects];
  auto pointerAt = [](CGFloat x, CGFloat y) -> NSCursor * {
    for (const auto &[rect, cursor] : pointers)
      if (NSPointInRect(NSMakePoint(x, y), rect))
        return cursor;
    return nil;
  };
  EXPECT_EQ(pointers.size(), 9U);
  EXPECT_EQ(pointerAt(60, 20), [NSCursor openHandCursor]);
  EXPECT_EQ(pointerAt(5, 20), [NSCursor resizeLeftRightCursor]);
  EXPECT_EQ(pointerAt(115, 20), [NSCursor resizeLeftRightCursor]);
  EXPECT_EQ(pointerAt(60, 5), [NSCursor resizeUpDownCursor]);
  EXPECT_EQ(pointerAt(60, 35), [NSCursor resizeUpDownCursor]);
  EXPECT_EQ(pointerAt(5, 5), [NSCursor crosshairCursor]);
  EXPECT_EQ(pointerAt(115, 35), [NSCursor crosshairCursor]);
  [box setFrameSize:NSMakeSize(15, 8)];
  pointers.clear();
  [box resetCursorRects];
  EXPECT_EQ(pointers.size(), 2U) << "a small box has no inside";
}
