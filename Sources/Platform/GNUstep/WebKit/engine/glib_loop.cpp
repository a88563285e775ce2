#include "WebKit/engine/glib_loop.h"

#include <cerrno>
#include <glib.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace vireonix::platform {
namespace {

constexpr std::size_t kUsualDescriptors = 32;
constexpr int kMillisecondsInSecond = 1000;
constexpr long kNanosecondsInMillisecond = 1000000L;
constexpr gint64 kMicrosecondsInMillisecond = 1000;

struct Awaited {
  std::vector<GPollFD> descriptors;
  int timeout = -1;
};

Awaited awaited(GMainContext* context, int priority) {
  Awaited result;
  result.descriptors.resize(kUsualDescriptors);
  for (;;) {
    const auto room = static_cast<int>(result.descriptors.size());
    const int count =
        g_main_context_query(context, priority, &result.timeout, result.descriptors.data(), room);
    result.descriptors.resize(static_cast<std::size_t>(count));
    if (count <= room)
      return result;
  }
}

unsigned epollEvents(unsigned glibEvents) {
  unsigned events = 0;
  if ((glibEvents & G_IO_IN) != 0)
    events |= EPOLLIN;
  if ((glibEvents & G_IO_OUT) != 0)
    events |= EPOLLOUT;
  if ((glibEvents & G_IO_PRI) != 0)
    events |= EPOLLPRI;
  return events;
}

} // namespace

GlibLoop& GlibLoop::shared() {
  // Never destroyed: a page may still end while the process exits.
  static auto* const loop = new GlibLoop;
  return *loop;
}

void GlibLoop::open() {
  if (users_++ > 0)
    return;
  epoll_ = epoll_create1(EPOLL_CLOEXEC);
  timer_ = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = timer_;
  epoll_ctl(epoll_, EPOLL_CTL_ADD, timer_, &event);
  // What other threads add to a context wakes it only while somebody owns it.
  g_main_context_acquire(g_main_context_default());
}

void GlibLoop::close() {
  if (--users_ > 0)
    return;
  g_main_context_release(g_main_context_default());
  ::close(timer_);
  ::close(epoll_);
  timer_ = -1;
  epoll_ = -1;
  watched_.clear();
}

bool GlibLoop::prepare() {
  if (epoll_ < 0)
    return false;
  GMainContext* context = g_main_context_default();
  int priority = 0;
  if (g_main_context_prepare(context, &priority) != FALSE)
    return true;
  const Awaited wait = awaited(context, G_MAXINT);
  if (wait.timeout == 0)
    return true;
  std::map<int, unsigned> wanted;
  for (const GPollFD& descriptor : wait.descriptors)
    wanted[descriptor.fd] |= epollEvents(descriptor.events);
  watch(wanted);
  setTimer(wait.timeout);
  return false;
}

void GlibLoop::watch(const std::map<int, unsigned>& wanted) {
  for (const auto& [descriptor, events] : watched_)
    if (!wanted.contains(descriptor))
      epoll_ctl(epoll_, EPOLL_CTL_DEL, descriptor, nullptr);
  for (const auto& [descriptor, events] : wanted) {
    epoll_event event{};
    event.events = events;
    event.data.fd = descriptor;
    // A number that was closed and given out again is no longer known to epoll.
    if (epoll_ctl(epoll_, EPOLL_CTL_MOD, descriptor, &event) != 0 && errno == ENOENT)
      epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event);
  }
  watched_ = wanted;
}

void GlibLoop::setTimer(int milliseconds) const {
  itimerspec time{};
  if (milliseconds > 0) {
    time.it_value.tv_sec = milliseconds / kMillisecondsInSecond;
    time.it_value.tv_nsec = (milliseconds % kMillisecondsInSecond) * kNanosecondsInMillisecond;
  }
  timerfd_settime(timer_, 0, &time, nullptr);
}

void GlibLoop::iterate(bool wait) {
  g_main_context_iteration(g_main_context_default(), wait ? TRUE : FALSE);
}

void GlibLoop::dispatch(int milliseconds) {
  GMainContext* context = g_main_context_default();
  // The timer has done its work; the next prepare() sets it again.
  setTimer(0);
  const gint64 end = g_get_monotonic_time() + milliseconds * kMicrosecondsInMillisecond;
  ++depth_;
  while (g_main_context_iteration(context, FALSE) != FALSE && g_get_monotonic_time() < end)
    continue;
  --depth_;
  rest();
}

bool GlibLoop::runUntil(const std::function<bool()>& done, double seconds) {
  const auto milliseconds = static_cast<guint>(seconds * kMillisecondsInSecond);
  const gint64 end = g_get_monotonic_time() + milliseconds * kMicrosecondsInMillisecond;
  // Ends a wait in which nothing else happens.
  GSource* bound = g_timeout_source_new(milliseconds + 1);
  g_source_set_callback(
      bound, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
  g_source_attach(bound, nullptr);
  ++depth_;
  while (!done() && g_get_monotonic_time() < end)
    iterate(true);
  --depth_;
  g_source_destroy(bound);
  g_source_unref(bound);
  rest();
  return done();
}

void GlibLoop::whenAtRest(std::function<void()> action) {
  waiting_.push_back(std::move(action));
  rest();
}

void GlibLoop::rest() {
  while (depth_ == 0 && !waiting_.empty()) {
    const std::vector<std::function<void()>> actions = std::exchange(waiting_, {});
    for (const std::function<void()>& action : actions)
      action();
  }
}

} // namespace vireonix::platform
