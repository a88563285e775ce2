// movie_writer NAME FILE: writes one of the project's Flash movies.
#include "scenes.h"

#include <cstdio>
#include <fstream>

int main(int count, char** arguments) {
  using namespace vireonix::movie;
  if (count != 3) {
    std::fputs("usage: movie_writer vireonix|stars FILE\n", stderr);
    return 2;
  }
  const std::optional<Movie> movie = scene(arguments[1]);
  if (!movie) {
    std::fprintf(stderr, "movie_writer: no movie is called %s\n", arguments[1]);
    return 2;
  }
  const std::vector<std::uint8_t> bytes = movie->file(Packing::Zlib);
  std::ofstream file(arguments[2], std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    std::fprintf(stderr, "movie_writer: cannot write %s\n", arguments[2]);
    return 1;
  }
  return 0;
}
