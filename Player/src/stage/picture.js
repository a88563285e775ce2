// A slide's picture: loaded when it is needed, shown when it can be drawn at once.

import { mediaAddress } from "../document/media.js";
import { make, within } from "./elements.js";

const kPatience = 4000;

export class Picture {
  /** @param {string} path as the document names it */
  constructor(path) {
    this.path = path;
    this.element = make("img", {
      class: "picture",
      alt: "",
      draggable: "false",
      decoding: "async",
    });
    /** @type {Promise<boolean> | null} */
    this.loading = null;
  }

  /**
   * @returns {Promise<boolean>} whether the picture can be shown; a slow one counts as shown when
   *   it arrives
   */
  load() {
    this.loading ??= this.fetch();
    return within(this.loading, kPatience, true);
  }

  async fetch() {
    const address = mediaAddress(this.path);
    if (address === "") return false;
    this.element.src = address;
    try {
      await this.element.decode();
    } catch {
      // A picture that loads but refuses to decode ahead of time is still drawn by the browser.
      if (this.element.naturalWidth === 0) return false;
    }
    this.element.dataset.loaded = "";
    return true;
  }
}
