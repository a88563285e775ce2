#include "killed_session.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vireonix::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(60);

[[noreturn]] void becomeSession(const SessionPlan& plan, int channel) {
  for (const char* name : {"TMPDIR", "TMP", "TEMP"})
    setenv(name, plan.temporaries.c_str(), 1);
  const std::string number = std::to_string(channel);
  const std::string seed = std::to_string(plan.seed);
  const std::string edits = std::to_string(plan.edits);
  execl(VIREONIX_SESSION, VIREONIX_SESSION, "-channel", number.c_str(), "-workspace",
        plan.workspace.c_str(), "-pictures", plan.pictures.c_str(), "-seed", seed.c_str(), "-edits",
        edits.c_str(), nullptr);
  _exit(127);
}

class Session {
public:
  explicit Session(const SessionPlan& plan) : plan_(plan), began_(Clock::now()) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
      std::abort();
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      becomeSession(plan, ends[1]);
    }
    close(ends[1]);
    channel_ = ends[0];
    planKill(Phase::Starting);
  }
  ~Session() { close(channel_); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  SessionEnd run() {
    while (listen())
      continue;
    int status = 0;
    waitpid(process_, &status, 0);
    end_.isKilled = isKilled_ && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    if (!end_.isKilled && status != 0)
      end_.failure = "the session ended with status " + std::to_string(status);
    return std::move(end_);
  }

private:
  void planKill(Phase phase) {
    if (phase == plan_.killIn)
      killAt_ = Clock::now() + plan_.delay;
  }

  // Hears what the session tells until the kill is due. What it told before it was killed is heard
  // too. Answers whether there may be more.
  bool listen() {
    const auto due = isKilled_ ? Clock::now() + kPatience : std::min(killAt_, began_ + kPatience);
    const std::chrono::nanoseconds rest = due - Clock::now();
    const timespec wait{.tv_sec = std::max<long>(0, rest.count() / 1'000'000'000),
                        .tv_nsec = std::max<long>(0, rest.count() % 1'000'000'000)};
    pollfd readable{.fd = channel_, .events = POLLIN, .revents = 0};
    if (ppoll(&readable, 1, &wait, nullptr) == 0) {
      if (isKilled_ || Clock::now() < killAt_)
        end_.failure = "the session hangs";
      kill(process_, SIGKILL);
      const bool isFirst = !isKilled_;
      isKilled_ = true;
      return isFirst;
    }
    std::array<char, 65536> bytes{};
    const ssize_t count = read(channel_, bytes.data(), bytes.size());
    if (count <= 0)
      return false;
    text_.append(bytes.data(), static_cast<size_t>(count));
    hearLines();
    return true;
  }

  // A line that was cut off was not told.
  void hearLines() {
    size_t end = text_.find('\n');
    for (; end != std::string::npos; end = text_.find('\n')) {
      const Phase before = end_.told.phase;
      end_.told.hear(std::string_view(text_).substr(0, end));
      text_.erase(0, end + 1);
      if (end_.told.phase != before)
        enterPhase(end_.told.phase);
    }
  }

  void enterPhase(Phase phase) {
    end_.phases.push_back(Clock::now() - phaseBegan_);
    if (phase == Phase::Editing && !isKilled_) {
      if (plan_.whenOpened)
        plan_.whenOpened(end_.told);
      (void)!write(channel_, "g", 1);
    }
    phaseBegan_ = Clock::now();
    planKill(phase);
  }

  const SessionPlan& plan_;
  Clock::time_point began_;
  Clock::time_point phaseBegan_ = began_;
  Clock::time_point killAt_ = Clock::time_point::max();
  pid_t process_ = 0;
  int channel_ = -1;
  bool isKilled_ = false;
  std::string text_;
  SessionEnd end_;
};

} // namespace

void Told::hear(std::string_view line) {
  const std::string_view word = line.substr(0, line.find(' '));
  const std::string_view rest = line.substr(std::min(word.size() + 1, line.size()));
  if (word == "opened") {
    phase = Phase::Editing;
    opened = done = stateOfLine(rest);
  } else if (word == "about") {
    about = stateOfLine(rest);
    positions.insert(about->position);
  } else if (word == "done") {
    done = *about;
    about.reset();
  } else if (word == "position") {
    positions.emplace(rest);
    done.position = rest;
  } else if (word == "settled") {
    positions = {done.position};
    isSettled = true;
  } else if (word == "closing") {
    phase = Phase::Closing;
    isApplied = rest == "ok";
  } else if (word == "closed") {
    phase = Phase::Closed;
  }
}

SessionEnd runSession(const SessionPlan& plan) {
  return Session(plan).run();
}

} // namespace vireonix::test
