// The movies of this project. Each is complete after its first frame and loops without a seam.
#pragma once

#include "movie.h"

#include <optional>
#include <string_view>

namespace vireonix::movie {

/// An open book in calm light whose page turns: 550 by 400 pixels, 24 frames a second, 3 s.
Movie bookScene();

/// A starry sky over hills with a falling star: 640 by 400 pixels, 24 frames a second, 4 s.
Movie starsScene();

/// The movie of that name ("vireonix" or "stars").
std::optional<Movie> scene(std::string_view name);

} // namespace vireonix::movie
