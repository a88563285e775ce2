// A slide's picture: loaded when it is needed, shown when it can be drawn at once.

import { mediaAddress } from "../document/media.js";
import { earlierAddress, freshAddress } from "../reading.js";
import { make, within } from "./elements.js";

const kPatience = 4000;
/** Of the kinds of pictures, those that can hold a moving one. */
const kCanMove = /\.(gif|png)$/i;

/** @param {HTMLImageElement} image @returns {Promise<boolean>} whether it can be drawn */
async function decoded(image) {
  // A picture that loads but refuses to decode ahead of time is still drawn by the browser.
  await image.decode().catch(() => {});
  return image.naturalWidth > 0;
}

/**
 * @param {HTMLImageElement} image
 * @returns {HTMLCanvasElement} its first picture
 */
function stillOf(image) {
  const canvas = make("canvas", {
    class: "picture",
    width: String(image.naturalWidth),
    height: String(image.naturalHeight),
  });
  canvas.getContext("2d")?.drawImage(image, 0, 0);
  return canvas;
}

export class Picture {
  /**
   * @param {string} path as the document names it
   * @param {boolean} still whether a moving picture stands still
   */
  constructor(path, still) {
    this.path = path;
    this.isStilled = still && kCanMove.test(path);
    this.image = make("img", { class: "picture", alt: "", draggable: "false" });
    /**
     * What is seen: the image, or its still.
     * @type {HTMLElement}
     */
    this.seen = this.image;
    this.element = make("div", { class: "backdrop" }, [this.image]);
    /** Told when a picture that was there is there no more. */
    this.onFailure = () => {};
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
    const [earlier, fresh] = [earlierAddress(address), freshAddress(address)];
    this.image.src = earlier;
    // What the browser still has from before is drawn with the page's first frame.
    if (this.image.complete && this.image.naturalWidth > 0) this.reveal(this.image);
    const there = await decoded(this.image);
    if (there) this.reveal(this.image);
    if (there && fresh !== earlier) this.refresh(fresh);
    return there || (fresh !== earlier && (await this.refresh(fresh)));
  }

  /** @param {string} address @returns {Promise<boolean>} */
  async refresh(address) {
    const image = make("img", { class: "picture", alt: "", draggable: "false", src: address });
    const there = await decoded(image);
    if (there) this.reveal(image);
    else if ("loaded" in this.element.dataset) this.lose();
    return there;
  }

  /** @param {HTMLImageElement} image that can be drawn */
  reveal(image) {
    const seen = this.isStilled ? stillOf(image) : image;
    if (seen !== this.seen) {
      seen.style.transform = this.seen.style.transform;
      this.seen.replaceWith(seen);
      this.seen = seen;
    }
    this.element.dataset.loaded = "";
  }

  lose() {
    delete this.element.dataset.loaded;
    this.onFailure();
  }

  /** @param {number} scale */
  setScale(scale) {
    this.seen.style.transform = `scale(${scale.toFixed(5)})`;
  }
}
