// picture_painter NAME FILE: paints one of the project's pictures; FILE's ending names the format.
#include "encode.h"
#include "paintings.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using namespace vireonix::painting;

struct Painting {
  std::string_view name;
  Canvas (*paint)();
};

constexpr std::array<Painting, 6> kPaintings = {{{"welcome", paintWelcome},
                                                 {"lake", paintLake},
                                                 {"meadow", paintMeadow},
                                                 {"sea", paintSea},
                                                 {"city", paintCity},
                                                 {"dunes", paintDunes}}};
constexpr int kJpegQuality = 84;
constexpr int kGifHundredths = 9;

bool write(const Canvas& picture, const std::string& path) {
  return path.ends_with(".png") ? writePng(picture, path) : writeJpeg(picture, kJpegQuality, path);
}

int finish(bool isWritten, const std::string& path) {
  if (!isWritten) {
    std::fprintf(stderr, "picture_painter: cannot write %s\n", path.c_str());
  }
  return isWritten ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: picture_painter welcome|lake|meadow|sea|city|dunes|winter FILE\n", stderr);
    return 2;
  }
  const std::string_view name = arguments[1];
  const std::string path = arguments[2];
  if (name == "winter") {
    return finish(writeGif(paintWinter(), kGifHundredths, path), path);
  }
  for (const Painting& painting : kPaintings) {
    if (painting.name == name) {
      return finish(write(painting.paint(), path), path);
    }
  }
  std::fprintf(stderr, "picture_painter: no picture is called %s\n", arguments[1]);
  return 2;
}
