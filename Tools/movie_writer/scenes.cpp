#include "scenes.h"

namespace vireonix::movie {

std::optional<Movie> scene(std::string_view name) {
  if (name == "vireonix") {
    return bookScene();
  }
  if (name == "stars") {
    return starsScene();
  }
  return std::nullopt;
}

} // namespace vireonix::movie
