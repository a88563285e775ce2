// The page's picture.
#include "WebKit/engine/web_page_state.h"

namespace vireonix::platform {
namespace {

constexpr int kBytesInPixel = 4;

// GDK's surface lives in the X server; this is its copy in memory.
class MappedSurface {
public:
  explicit MappedSurface(cairo_surface_t* surface)
      : surface_(surface), image_(cairo_surface_map_to_image(surface, nullptr)) {}
  MappedSurface(const MappedSurface&) = delete;
  MappedSurface& operator=(const MappedSurface&) = delete;
  ~MappedSurface() { cairo_surface_unmap_image(surface_, image_); }

  [[nodiscard]] int width() const { return cairo_image_surface_get_width(image_); }
  [[nodiscard]] int height() const { return cairo_image_surface_get_height(image_); }
  /// Pixels as 0x..RRGGBB in the machine's byte order; null when the surface is in error.
  [[nodiscard]] const std::uint32_t* row(int y) const {
    const unsigned char* data = cairo_image_surface_get_data(image_);
    if (data == nullptr)
      return nullptr;
    const std::ptrdiff_t offset = std::ptrdiff_t{y} * cairo_image_surface_get_stride(image_);
    return reinterpret_cast<const std::uint32_t*>(static_cast<const void*>(data + offset));
  }

private:
  cairo_surface_t* surface_;
  cairo_surface_t* image_;
};

void copyRow(const std::uint32_t* from, std::uint8_t* to, int pixels) {
  for (int x = 0; x < pixels; ++x, to += kBytesInPixel) {
    const std::uint32_t pixel = from[x];
    to[0] = static_cast<std::uint8_t>(pixel >> 16U);
    to[1] = static_cast<std::uint8_t>(pixel >> 8U);
    to[2] = static_cast<std::uint8_t>(pixel);
    to[3] = UINT8_MAX;
  }
}

cairo_surface_t* surfaceOf(const WebPage::State& state) {
  return state.crashed ? nullptr
                       : gtk_offscreen_window_get_surface(GTK_OFFSCREEN_WINDOW(state.window));
}

gboolean pixelsChanged(GtkWidget*, GdkEvent*, gpointer data) {
  static_cast<WebPage::State*>(data)->client->pixelsChanged();
  return FALSE;
}

} // namespace

std::optional<PagePixels> WebPage::pixelSize() const {
  if (surfaceOf(*state_) == nullptr)
    return std::nullopt;
  GdkWindow* window = gtk_widget_get_window(state_->window);
  PagePixels size;
  size.scale = gdk_window_get_scale_factor(window);
  size.width = gdk_window_get_width(window) * size.scale;
  size.height = gdk_window_get_height(window) * size.scale;
  return size;
}

bool WebPage::copyPixels(const PagePixels& size, std::uint8_t* rgba) const {
  cairo_surface_t* surface = surfaceOf(*state_);
  if (surface == nullptr)
    return false;
  const MappedSurface mapped(surface);
  if (mapped.width() < size.width || mapped.height() < size.height)
    return false;
  for (int y = 0; y < size.height; ++y) {
    const std::uint32_t* row = mapped.row(y);
    if (row == nullptr)
      return false;
    copyRow(row, rgba + std::ptrdiff_t{y} * size.width * kBytesInPixel, size.width);
  }
  return true;
}

void connectPixelSignals(WebPage::State& state) {
  g_signal_connect(state.window, "damage-event", G_CALLBACK(pixelsChanged), &state);
}

} // namespace vireonix::platform
