#include "movie_reader.h"

#include <zlib.h>

namespace vireonix::test {

namespace {

void require(bool condition, const char* complaint) {
  if (!condition) {
    throw std::runtime_error(complaint);
  }
}

void skipMatrix(BitReader& in) {
  for (int pair = 0; pair < 2; ++pair) { // scale, then skew
    if (in.bits(1) != 0) {
      const auto width = static_cast<int>(in.bits(5));
      in.bits(width);
      in.bits(width);
    }
  }
  const auto width = static_cast<int>(in.bits(5));
  in.bits(width);
  in.bits(width);
  in.align();
}

void skipFill(BitReader& in) {
  const std::uint32_t type = in.bytes(1);
  if (type == 0x00) {
    in.take(4);
    return;
  }
  require(type == 0x10 || type == 0x12, "unknown fill");
  skipMatrix(in);
  const std::uint32_t stops = in.bytes(1);
  require(stops >= 2 && stops <= 15, "a gradient needs 2 to 15 stops");
  std::uint32_t before = 0;
  for (std::uint32_t i = 0; i < stops; ++i) {
    const std::uint32_t place = in.bytes(1);
    require(place >= before, "gradient stops out of order");
    before = place;
    in.take(4);
  }
}

class OutlineReader {
public:
  OutlineReader(BitReader& in, ReadShape& shape) : in_(in), shape_(shape) {
    fillBits_ = static_cast<int>(in.bits(4));
    lineBits_ = static_cast<int>(in.bits(4));
  }

  void readAll() {
    while (readRecord()) {
    }
    close();
  }

private:
  bool readRecord() {
    if (in_.bits(1) != 0) {
      readEdge();
      return true;
    }
    const std::uint32_t flags = in_.bits(5);
    if (flags == 0) {
      return false;
    }
    require((flags & 0b11000U) == 0, "unexpected line or new styles");
    if ((flags & 1U) != 0) {
      close();
      const auto width = static_cast<int>(in_.bits(5));
      x_ = startX_ = in_.signedBits(width);
      y_ = startY_ = in_.signedBits(width);
      ++shape_.outlines;
    }
    for (const std::uint32_t flag : {0b00010U, 0b00100U}) {
      if ((flags & flag) != 0) {
        require(in_.bits(fillBits_) <= static_cast<std::uint32_t>(shape_.fills), "no such fill");
      }
    }
    require(lineBits_ == 0, "unexpected lines");
    return true;
  }

  void readEdge() {
    const bool isLine = in_.bits(1) != 0;
    const int width = static_cast<int>(in_.bits(4)) + 2;
    if (isLine) {
      require(in_.bits(1) == 1, "expected a general line");
      step(width);
    } else {
      step(width);
      step(width);
    }
  }

  void step(int width) {
    x_ += in_.signedBits(width);
    y_ += in_.signedBits(width);
    require(shape_.bounds.holds(x_, y_), "a point outside the bounds");
  }

  void close() const { require(x_ == startX_ && y_ == startY_, "an open outline"); }

  BitReader& in_;
  ReadShape& shape_;
  int fillBits_ = 0;
  int lineBits_ = 0;
  std::int32_t x_ = 0;
  std::int32_t y_ = 0;
  std::int32_t startX_ = 0;
  std::int32_t startY_ = 0;
};

std::vector<std::uint8_t> inflated(std::span<const std::uint8_t> stream, std::size_t length) {
  std::vector<std::uint8_t> body(length);
  uLongf bodyLength = length;
  uLong streamLength = stream.size();
  const int result = uncompress2(body.data(), &bodyLength, stream.data(), &streamLength);
  require(result == Z_OK && bodyLength == length, "the stated length is not the body's");
  require(streamLength == stream.size(), "bytes behind the compressed body");
  return body;
}

} // namespace

std::uint32_t BitReader::bits(int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i, ++bit_) {
    if (bit_ / 8 >= bytes_.size()) {
      throw std::out_of_range("read past the end");
    }
    value = value << 1U | (static_cast<std::uint32_t>(bytes_[bit_ / 8]) >> (7 - bit_ % 8) & 1U);
  }
  return value;
}

std::int32_t BitReader::signedBits(int count) {
  const std::uint32_t value = bits(count);
  const bool isNegative = count > 0 && (value >> (count - 1) & 1U) != 0;
  return static_cast<std::int32_t>(isNegative && count < 32 ? value | ~0U << count : value);
}

std::uint32_t BitReader::bytes(int count) {
  align();
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) {
    value |= bits(8) << (8 * i);
  }
  return value;
}

std::span<const std::uint8_t> BitReader::take(std::size_t count) {
  align();
  if (count > left()) {
    throw std::out_of_range("took past the end");
  }
  const auto part = bytes_.subspan(bit_ / 8, count);
  bit_ += 8 * count;
  return part;
}

Rect readRect(BitReader& in) {
  in.align();
  const auto width = static_cast<int>(in.bits(5));
  Rect rect;
  for (std::int32_t* edge : {&rect.left, &rect.right, &rect.top, &rect.bottom}) {
    *edge = in.signedBits(width);
  }
  in.align();
  return rect;
}

ReadMovie readMovie(std::span<const std::uint8_t> file) {
  BitReader header(file);
  const std::uint32_t signature = header.bytes(3);
  const bool isPacked = signature == 0x535743; // "CWS", the first letter lowest
  require(isPacked || signature == 0x535746, "not a movie");
  ReadMovie movie;
  movie.version = static_cast<int>(header.bytes(1));
  const std::size_t length = header.bytes(4);
  require(length >= 8, "too short a length");
  const auto rest = header.take(header.left());
  require(isPacked || rest.size() == length - 8, "the stated length is not the file's");
  const auto body =
      isPacked ? inflated(rest, length - 8) : std::vector<std::uint8_t>(rest.begin(), rest.end());
  BitReader in(body);
  movie.stage = readRect(in);
  movie.framesPerSecond = in.bytes(2) / 256.0;
  movie.frames = static_cast<int>(in.bytes(2));
  while (movie.tags.empty() || movie.tags.back().code != 0) {
    const std::uint32_t head = in.bytes(2);
    const std::uint32_t shortLength = head & 0x3FU;
    const auto bytes = in.take(shortLength == 0x3F ? in.bytes(4) : shortLength);
    movie.tags.push_back({static_cast<std::uint16_t>(head >> 6U), {bytes.begin(), bytes.end()}});
  }
  require(in.left() == 0, "bytes behind the end tag");
  return movie;
}

ReadShape readShape(const Tag& tag) {
  BitReader in(tag.body);
  ReadShape shape;
  shape.character = static_cast<int>(in.bytes(2));
  shape.bounds = readRect(in);
  shape.fills = static_cast<int>(in.bytes(1));
  for (int fill = 0; fill < shape.fills; ++fill) {
    skipFill(in);
  }
  require(in.bytes(1) == 0, "unexpected line styles");
  OutlineReader(in, shape).readAll();
  require(in.left() == 0, "bytes behind the shape");
  return shape;
}

Placement readPlacement(const Tag& tag) {
  BitReader in(tag.body);
  const std::uint32_t flags = in.bytes(1);
  require((flags & 0b11110000U) == 0, "unexpected placement flags");
  Placement placement;
  placement.moves = (flags & 1U) != 0;
  placement.hasCharacter = (flags & 2U) != 0;
  placement.depth = static_cast<int>(in.bytes(2));
  placement.character = placement.hasCharacter ? static_cast<int>(in.bytes(2)) : 0;
  if ((flags & 4U) != 0) {
    skipMatrix(in);
  }
  if ((flags & 8U) != 0) {
    const std::uint32_t terms = in.bits(2);
    const auto width = static_cast<int>(in.bits(4));
    for (std::uint32_t kind : {1U, 2U}) {
      if ((terms & kind) != 0) {
        in.bits(width);
        in.bits(width);
        in.bits(width);
        in.bits(width);
      }
    }
    in.align();
  }
  require(in.left() == 0, "bytes behind the placement");
  return placement;
}

} // namespace vireonix::test
