#include "sample_files.h"

#include "support/temporary_folder.h"
#include "tools/movie_reader.h"

#include <gif_lib.h>
#include <libxml/parser.h>

#include <cstdio>
#include <jpeglib.h>
#include <png.h>

namespace vireonix::test {

namespace {

const xmlChar* chars(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}
const char* plain(const xmlChar* chars) {
  return reinterpret_cast<const char*>(chars);
}

[[noreturn]] void giveUp(j_common_ptr jpeg) {
  jpeg_destroy(jpeg);
  throw std::runtime_error("not a JPEG");
}

std::optional<PictureSize> decodeJpeg(const std::string& bytes) {
  jpeg_decompress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg.err = jpeg_std_error(&errors);
  errors.error_exit = giveUp;
  jpeg_create_decompress(&jpeg);
  jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  jpeg_read_header(&jpeg, TRUE);
  jpeg_start_decompress(&jpeg);
  std::vector<JSAMPLE> row(static_cast<std::size_t>(jpeg.output_width) * jpeg.output_components);
  JSAMPROW rows = row.data();
  while (jpeg.output_scanline < jpeg.output_height) {
    jpeg_read_scanlines(&jpeg, &rows, 1);
  }
  const PictureSize size = {static_cast<int>(jpeg.output_width),
                            static_cast<int>(jpeg.output_height), 1};
  jpeg_finish_decompress(&jpeg);
  jpeg_destroy_decompress(&jpeg);
  return errors.num_warnings == 0 ? std::optional(size) : std::nullopt;
}

std::optional<PictureSize> decodePng(const std::string& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) {
    return std::nullopt;
  }
  image.format = PNG_FORMAT_RGB;
  std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) {
    return std::nullopt;
  }
  return PictureSize{static_cast<int>(image.width), static_cast<int>(image.height), 1};
}

std::optional<PictureSize> decodeGif(const std::string& path) {
  GifFileType* gif = DGifOpenFileName(path.c_str(), nullptr);
  if (gif == nullptr) {
    return std::nullopt;
  }
  const bool isWhole = DGifSlurp(gif) == GIF_OK;
  const PictureSize size = {gif->SWidth, gif->SHeight, gif->ImageCount};
  DGifCloseFile(gif, nullptr);
  return isWhole ? std::optional(size) : std::nullopt;
}

PictureSize decodeMovie(const std::string& bytes) {
  const ReadMovie movie =
      readMovie({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  return {movie.stage.right / 20, movie.stage.bottom / 20, movie.frames};
}

} // namespace

Document parseStrictly(const std::string& text) {
  return Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

std::string nameOf(const xmlNode* node) {
  return plain(node->name);
}

std::string attributeOf(const xmlNode* node, const char* name) {
  xmlChar* value = xmlGetProp(node, chars(name));
  std::string answer = value == nullptr ? "" : plain(value);
  xmlFree(value);
  return answer;
}

std::vector<std::string> attributeNames(const xmlNode* node) {
  std::vector<std::string> names;
  for (const xmlAttr* each = node->properties; each != nullptr; each = each->next) {
    names.emplace_back(plain(each->name));
  }
  return names;
}

std::vector<const xmlNode*> childrenOf(const xmlNode* node) {
  std::vector<const xmlNode*> children;
  for (const xmlNode* each = node->children; each != nullptr; each = each->next) {
    children.push_back(each);
  }
  return children;
}

const xmlNode* childNamed(const xmlNode* node, const char* name) {
  for (const xmlNode* each : childrenOf(node)) {
    if (each->type == XML_ELEMENT_NODE && nameOf(each) == name) {
      return each;
    }
  }
  return nullptr;
}

std::optional<PictureSize> decodedSize(const std::string& path) {
  try {
    const std::string bytes = fileBytes(path);
    if (path.ends_with(".jpg")) {
      return decodeJpeg(bytes);
    }
    if (path.ends_with(".png")) {
      return decodePng(bytes);
    }
    return path.ends_with(".gif") ? decodeGif(path) : std::optional(decodeMovie(bytes));
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

} // namespace vireonix::test
