// A slide's Flash movie, played in a frame that can reach nothing.

import frameScript from "bundled:./frame.js";
import { mediaAddress } from "../document/media.js";
import { freshAddress, readBytes } from "../reading.js";
import { after, make, within } from "../stage/elements.js";
import { emulator, prepareEmulator } from "./emulator.js";
import { movieSeconds, signature } from "./header.js";

const kPatience = 4000;
const kLongestStart = 20000;
/** How far a movie runs unseen before it stands still: the first frames of many are empty. */
const kStillAfter = 1000;
const kSignatures = ["FWS", "CWS", "ZWS"];
const kPolicy =
  "default-src 'none'; script-src 'unsafe-inline' 'wasm-unsafe-eval'; " +
  "style-src 'unsafe-inline'; img-src data: blob:; media-src data: blob:; font-src data:";
const kStyle =
  "html, body { height: 100%; margin: 0; overflow: hidden } " +
  "ruffle-player { width: 100%; height: 100%; display: block }";

/** @returns {HTMLIFrameElement} not yet part of the page */
function makeFrame() {
  const page =
    `<!DOCTYPE html><meta charset="utf-8">` +
    `<meta http-equiv="Content-Security-Policy" content="${kPolicy}">` +
    `<style>${kStyle}</style><body><script>${frameScript}</script>`;
  // Without "allow-same-origin" the frame's origin is its own: no storage, no files, no page
  // around it.
  return make("iframe", {
    sandbox: "allow-scripts",
    tabindex: "-1",
    "aria-hidden": "true",
    srcdoc: page,
  });
}

/**
 * @param {HTMLIFrameElement} frame
 * @param {ArrayBuffer} movie
 * @returns {Promise<MessagePort | null>} for orders to the movie; null when it does not play
 */
async function playIn(frame, movie) {
  const opened = new Promise((done) => frame.addEventListener("load", done, { once: true }));
  const [{ scripts, wasm }] = await Promise.all([emulator(), opened]);
  const { port1, port2 } = new MessageChannel();
  const answer = new Promise((/** @type {(port: MessagePort | null) => void} */ done) => {
    port1.onmessage = ({ data }) => done(data === "playing" ? port1 : null);
  });
  frame.contentWindow?.postMessage({ scripts, wasm, movie }, "*", [port2, wasm]);
  return within(answer, kLongestStart, null);
}

export class Movie {
  /**
   * @param {string} path as the document names it
   * @param {boolean} still whether it is shown as a picture that does not move
   */
  constructor(path, still) {
    this.path = path;
    this.still = still;
    this.element = make("div", { class: "movie" });
    /** Told when a movie that was found does not play. */
    this.onFailure = () => {};
    /** @type {Promise<ArrayBuffer | null> | null} */
    this.loading = null;
    /** @type {HTMLIFrameElement | null} */
    this.frame = null;
    /** @type {MessagePort | null} */
    this.port = null;
    this.paused = false;
    /** How long it plays, once it is loaded; 0 when that is not known, or when it does not play. */
    this.seconds = 0;
  }

  /**
   * @returns {Promise<boolean>} whether there is such a movie; one that is slow to come counts as
   *   there
   */
  async load() {
    this.loading ??= this.read().catch(() => null);
    return within(
      this.loading.then((movie) => movie !== null),
      kPatience,
      true,
    );
  }

  /** @returns {Promise<ArrayBuffer | null>} */
  async read() {
    const address = mediaAddress(this.path);
    if (address === "") return null;
    const movie = await readBytes(freshAddress(address));
    if (!kSignatures.includes(signature(movie))) return null;
    if (!this.still) this.seconds = await movieSeconds(movie);
    await prepareEmulator();
    return movie;
  }

  /** Starts the movie from its beginning. */
  async play() {
    this.stop();
    const frame = makeFrame();
    this.frame = frame;
    delete this.element.dataset.playing;
    await this.load();
    const movie = await this.loading;
    if (!movie || this.frame !== frame) return;
    const started = playIn(frame, movie).catch(() => null);
    this.element.append(frame);
    const port = await started;
    if (port && this.still) await after(kStillAfter);
    if (this.frame !== frame) return;
    if (!port) return this.fail();
    this.port = port;
    this.element.dataset.playing = "";
    this.setPaused(this.paused);
  }

  /** @param {boolean} paused */
  setPaused(paused) {
    this.paused = paused;
    this.port?.postMessage(paused || this.still ? "pause" : "play");
  }

  fail() {
    this.stop();
    this.onFailure();
  }

  stop() {
    this.frame?.remove();
    this.frame = null;
    this.port = null;
    delete this.element.dataset.playing;
  }
}
