#include "encode.h"

#include "palette.h"

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>

#include <array>
#include <cstdio>
#include <memory>

namespace vireonix::painting {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Bytes of an RGB picture, row by row. A faint regular pattern hides the steps between tones.
std::vector<std::uint8_t> bytesOf(const Canvas& picture) {
  constexpr std::array<float, 16> kPattern = {0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};
  std::vector<std::uint8_t> bytes;
  bytes.reserve(static_cast<std::size_t>(picture.width()) * picture.height() * 3);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const float offset = (kPattern.at(static_cast<std::size_t>(y % 4 * 4 + x % 4)) + 0.5F) / 16;
      const Rgb& pixel = picture.at(x, y);
      for (const float part : {pixel.red, pixel.green, pixel.blue}) {
        const float level = std::clamp(part, 0.0F, 1.0F) * 255 + offset;
        bytes.push_back(static_cast<std::uint8_t>(std::min(level, 255.0F)));
      }
    }
  }
  return bytes;
}

int writeTo(GifFileType* gif, const GifByteType* bytes, int count) {
  auto* file = static_cast<std::FILE*>(gif->UserData);
  return static_cast<int>(std::fwrite(bytes, 1, static_cast<std::size_t>(count), file));
}

struct CloseGif {
  void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;

bool writeGifHead(GifFileType* gif, const Palette& palette, int width, int height) {
  std::array<GifColorType, 256> colours{};
  for (std::size_t i = 0; i < palette.size(); ++i) {
    const std::array<std::uint8_t, 3> colour = palette.colour(i);
    colours.at(i) = {colour[0], colour[1], colour[2]};
  }
  ColorMapObject* map = GifMakeMapObject(256, colours.data());
  EGifSetGifVersion(gif, true);
  const bool isPut = EGifPutScreenDesc(gif, width, height, 8, 0, map) == GIF_OK;
  GifFreeMapObject(map);
  // The block with which browsers agree to repeat for ever.
  const std::array<std::uint8_t, 3> repeat = {1, 0, 0};
  return isPut && EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE) == GIF_OK &&
         EGifPutExtensionBlock(gif, 11, "NETSCAPE2.0") == GIF_OK &&
         EGifPutExtensionBlock(gif, static_cast<int>(repeat.size()), repeat.data()) == GIF_OK &&
         EGifPutExtensionTrailer(gif) == GIF_OK;
}

/// One frame over the one before; an index of Palette::kTransparent keeps what was there.
bool writeGifFrame(GifFileType* gif, std::vector<std::uint8_t>& indexes, int width,
                   int hundredths) {
  GraphicsControlBlock control{};
  control.DisposalMode = DISPOSE_DO_NOT;
  control.DelayTime = hundredths;
  control.TransparentColor = Palette::kTransparent;
  std::array<GifByteType, 4> block{};
  EGifGCBToExtension(&control, block.data());
  const int height = static_cast<int>(indexes.size()) / width;
  if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, block.size(), block.data()) != GIF_OK ||
      EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) != GIF_OK) {
    return false;
  }
  for (int y = 0; y < height; ++y) {
    if (EGifPutLine(gif, indexes.data() + static_cast<std::ptrdiff_t>(y) * width, width) !=
        GIF_OK) {
      return false;
    }
  }
  return true;
}

} // namespace

bool writeJpeg(const Canvas& picture, int quality, const std::string& path) {
  const File file(std::fopen(path.c_str(), "wb"));
  if (!file) {
    return false;
  }
  jpeg_compress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors); // ends the program with a message when the disk is full
  jpeg_create_compress(&jpeg);
  jpeg_stdio_dest(&jpeg, file.get());
  jpeg.image_width = static_cast<JDIMENSION>(picture.width());
  jpeg.image_height = static_cast<JDIMENSION>(picture.height());
  jpeg.input_components = 3;
  jpeg.in_color_space = JCS_RGB;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, quality, TRUE);
  jpeg.optimize_coding = TRUE;
  jpeg_simple_progression(&jpeg);
  jpeg_start_compress(&jpeg, TRUE);
  std::vector<std::uint8_t> bytes = bytesOf(picture);
  while (jpeg.next_scanline < jpeg.image_height) {
    JSAMPROW row =
        bytes.data() + static_cast<std::size_t>(jpeg.next_scanline) * jpeg.image_width * 3;
    jpeg_write_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_compress(&jpeg);
  jpeg_destroy_compress(&jpeg);
  return std::fflush(file.get()) == 0;
}

bool writePng(const Canvas& picture, const std::string& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.width());
  image.height = static_cast<png_uint_32>(picture.height());
  image.format = PNG_FORMAT_RGB;
  return png_image_write_to_file(&image, path.c_str(), 0, bytesOf(picture).data(), 0, nullptr) != 0;
}

bool writeGif(const std::vector<Canvas>& frames, int hundredths, const std::string& path) {
  const Palette palette(frames);
  const int width = frames.front().width();
  const File file(std::fopen(path.c_str(), "wb"));
  Gif gif(file ? EGifOpen(file.get(), writeTo, nullptr) : nullptr);
  if (!gif || !writeGifHead(gif.get(), palette, width, frames.front().height())) {
    return false;
  }
  std::vector<std::uint8_t> shown;
  for (const Canvas& frame : frames) {
    const std::vector<std::uint8_t> indexes = palette.indexes(frame);
    std::vector<std::uint8_t> changes = indexes;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      if (shown[i] == indexes[i]) {
        changes[i] = Palette::kTransparent;
      }
    }
    if (!writeGifFrame(gif.get(), changes, width, hundredths)) {
      return false;
    }
    shown = indexes;
  }
  return EGifCloseFile(gif.release(), nullptr) == GIF_OK && std::fflush(file.get()) == 0;
}

} // namespace vireonix::painting
