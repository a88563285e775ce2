#import "Class/DetachedCall.h"
#import "support/run_loop.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <atomic>

using namespace vireonix::test;

static std::atomic<int> ran;
static std::atomic<int> ranOnMainThread;
static std::atomic<int> freed;
static std::atomic<int> freedOnMainThread;

@interface Worker : NSObject
- (void)work;
@end

@implementation Worker
- (void)work {
  // As a method of a controller may, leaves a reference in the thread's pool.
  [[self retain] autorelease];
  if ([NSThread isMainThread])
    ++ranOnMainThread;
  ++ran;
}
- (void)dealloc {
  if ([NSThread isMainThread])
    ++freedOnMainThread;
  ++freed;
  [super dealloc];
}
@end

namespace {

class DetachedCallTest : public testing::Test {
protected:
  void SetUp() override {
    ran = 0;
    ranOnMainThread = 0;
    freed = 0;
    freedOnMainThread = 0;
  }
};

void sendAndLetGo() {
  @autoreleasepool {
    Worker *worker = [[Worker alloc] init];
    [DetachedCall send:@selector(work) to:worker];
    [worker release];
  }
}

} // namespace

TEST_F(DetachedCallTest, TheMethodRunsOnAThreadOfItsOwn) {
  sendAndLetGo();
  EXPECT_TRUE(pumpUntil([] { return ran.load() == 1; }));
  EXPECT_EQ(ranOnMainThread.load(), 0);
}

TEST_F(DetachedCallTest, NothingHappensWithoutATarget) {
  [DetachedCall send:@selector(work) to:nil];
  pumpFor(0.05);
  EXPECT_EQ(ran.load(), 0);
}

TEST_F(DetachedCallTest, TheLastReferenceIsGivenUpOnTheMainThread) {
  for (int round = 0; round < 500; ++round)
    sendAndLetGo();
  EXPECT_TRUE(pumpUntil([] { return freed.load() == 500; }, 30));
  EXPECT_EQ(ran.load(), 500);
  EXPECT_EQ(freedOnMainThread.load(), 500);
}

TEST_F(DetachedCallTest, TheTargetIsFreedInModalSessionsAndWhileTheMouseIsFollowed) {
  for (NSString *mode in @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
    freed = 0;
    sendAndLetGo();
    EXPECT_TRUE(pumpUntil([] { return freed.load() == 1; }, 10, mode));
  }
}
