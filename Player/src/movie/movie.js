// A slide's Flash movie.

import { make } from "../stage/elements.js";

export class Movie {
  /** @param {string} path as the document names it */
  constructor(path) {
    this.path = path;
    this.element = make("div", { class: "movie" });
  }

  /** @returns {Promise<boolean>} whether the movie can be shown */
  async load() {
    return false;
  }

  play() {}

  stop() {}
}
