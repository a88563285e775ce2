#include "Core/position.h"

#include "Core/number_text.h"
#include "Core/utf8.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>

namespace vireonix::core {
namespace {

constexpr float kPage = 100.0F;
// What two opposite margins may take together when an edge is dragged.
constexpr float kMostMargins = 80.0F;

constexpr size_t kLines = 6;
constexpr size_t kMostBytes = size_t{1} << 20;

void move(Position& position, float dx, float dy) {
  auto& [left, top, right, bottom, transparency, layer] = position;
  left += dx;
  right -= dx;
  top -= dy;
  bottom += dy;
  auto stopAtPage = [](float& margin, float& opposite) {
    if (margin < 0) {
      opposite = margin + opposite;
      margin = 0;
    }
  };
  stopAtPage(left, right);
  stopAtPage(right, left);
  stopAtPage(bottom, top);
  stopAtPage(top, bottom);
}

// The margin whose edge was dragged, kept within the page and away from the opposite edge; answers
// whether the opposite margin alone takes more than two margins may.
bool limit(float& margin, float opposite) {
  margin = std::min(margin, kPage - opposite);
  margin = std::max(margin, 0.0F);
  if (!(margin + opposite > kMostMargins))
    return false;
  margin = kMostMargins - opposite;
  return margin < 0;
}

void resize(float& margin, float& opposite, float by) {
  margin += by;
  if (limit(margin, opposite)) {
    margin = 0;
    opposite = kMostMargins;
  }
}

// Unlike the other edges, the right one leaves the opposite margin alone.
void resizeRight(Position& position, float by) {
  position.right += by;
  if (limit(position.right, position.left))
    position.right = kMostMargins;
}

class File {
public:
  explicit File(const std::string& path)
      : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  ~File() {
    if (descriptor_ >= 0)
      ::close(descriptor_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // The first bytes of a regular file; nothing when there is none or it cannot be read.
  [[nodiscard]] std::optional<std::string> start() const {
    struct stat information {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &information) != 0 || !S_ISREG(information.st_mode))
      return std::nullopt;
    std::string bytes;
    std::array<char, 16384> part{};
    while (bytes.size() < kMostBytes) {
      const ssize_t count = ::read(descriptor_, part.data(), part.size());
      if (count < 0 && errno == EINTR)
        continue;
      if (count < 0)
        return std::nullopt;
      if (count == 0)
        break;
      bytes.append(part.data(), static_cast<size_t>(count));
    }
    return bytes;
  }

private:
  int descriptor_;
};

// Without a sequence that the end of the bytes cuts off.
std::string_view withoutCutSequence(std::string_view bytes) {
  constexpr size_t kLongestCut = 3;
  for (size_t cut = 1; cut <= std::min(kLongestCut, bytes.size()); ++cut) {
    const std::string_view tail = bytes.substr(bytes.size() - cut);
    const bool isTrailing = (tail.front() & 0xC0) == 0x80;
    if (!isTrailing)
      return utf8SequenceLength(tail) == 0 ? bytes.substr(0, bytes.size() - cut) : bytes;
  }
  return bytes;
}

// The first six lines, or nothing when there are fewer.
std::optional<std::array<std::string_view, kLines>> firstLines(std::string_view text) {
  std::array<std::string_view, kLines> lines;
  for (size_t i = 0; i < kLines; ++i) {
    const size_t end = text.find('\n');
    if (end == std::string_view::npos && i + 1 < kLines)
      return std::nullopt;
    lines.at(i) = text.substr(0, end);
    if (end != std::string_view::npos)
      text.remove_prefix(end + 1);
  }
  return lines;
}

} // namespace

bool Frame::visible() const {
  return width > 0 && height > 0 && std::isfinite(x) && std::isfinite(y) && std::isfinite(width) &&
         std::isfinite(height);
}

Frame frameOf(const Position& position, float pageWidth, float pageHeight) {
  return {pageWidth * position.left / kPage, pageHeight * position.bottom / kPage,
          pageWidth * (kPage - position.left - position.right) / kPage,
          pageHeight * (kPage - position.top - position.bottom) / kPage};
}

int32_t edgesAt(double x, double y, double width, double height) {
  int32_t edges = 0;
  if (x < kGrabZone)
    edges = kLeftEdge;
  else if (x > width - kGrabZone)
    edges = kRightEdge;
  if (y < kGrabZone)
    edges |= kBottomEdge;
  else if (y > height - kGrabZone)
    edges |= kTopEdge;
  return edges;
}

void drag(Position& position, int32_t edges, float dx, float dy) {
  if (edges == 0)
    move(position, dx, dy);
  if ((edges & kLeftEdge) != 0)
    resize(position.left, position.right, dx);
  if ((edges & kRightEdge) != 0)
    resizeRight(position, -dx);
  if ((edges & kBottomEdge) != 0)
    resize(position.bottom, position.top, dy);
  if ((edges & kTopEdge) != 0)
    resize(position.top, position.bottom, -dy);
}

std::string positionText(const Position& position) {
  std::string text;
  for (const float value :
       {position.left, position.top, position.right, position.bottom, position.transparency})
    text += oneDecimalText(value) + '\n';
  return text + std::to_string(position.layer);
}

Position positionOfText(std::string_view bytes) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (!isWellFormedUtf8(bytes))
    return {};
  if (bytes.starts_with(kByteOrderMark))
    bytes.remove_prefix(kByteOrderMark.size());
  std::string text(bytes);
  std::erase(text, '\r');
  const auto lines = firstLines(text);
  if (!lines)
    return {};
  const auto& [left, top, right, bottom, transparency, layer] = *lines;
  return {floatValue(left),   floatValue(top),          floatValue(right),
          floatValue(bottom), floatValue(transparency), intValue(layer)};
}

Position readPositionFile(const std::string& path) {
  const std::optional<std::string> bytes = File(path).start();
  if (!bytes)
    return {};
  return positionOfText(bytes->size() < kMostBytes ? std::string_view(*bytes)
                                                   : withoutCutSequence(*bytes));
}

std::string positionFileOf(const std::string& workspace) {
  namespace fs = std::filesystem;
  constexpr std::string_view kName = "settings.dat";
  const fs::path folder(workspace);
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    if (entry->path().filename() == kName)
      return folder / kName;
  return folder / "defaultsettings.dat";
}

} // namespace vireonix::core
