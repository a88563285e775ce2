// Plays a slider document on a stage.

import { Clock } from "./motion/clock.js";
import { findChange, loadPlace, marksOf, savePlace } from "./place.js";
import { settledTime } from "./motion/timing.js";
import { SlideView } from "./stage/slide_view.js";
import { Stage } from "./stage/stage.js";

/** @typedef {import("./document/slider_document.js").Slide} Slide */

/** How long before a changed caption's entrance the slide is taken up. */
const kRunUp = 250;
const kSaveEvery = 1000;

/**
 * @typedef {object} Start
 * @property {number} index
 * @property {number} time
 * @property {boolean} paused
 * @property {number} stopAt the time at which a paused player stops again; Infinity for never
 */

export class Player {
  /** @param {HTMLElement} host @param {Slide[]} slides at least one */
  constructor(host, slides) {
    const still = matchMedia("(prefers-reduced-motion: reduce)").matches;
    this.marks = marksOf(slides);
    this.views = slides.map((slide) => new SlideView(slide, still));
    for (const view of this.views) view.media.onFailure = () => this.onFailure(view);
    const start = this.findStart();
    this.paused = start.paused;
    this.stopAt = start.stopAt;
    this.visit = 0;
    /** Whether the slide on show has yet to be seen. */
    this.loading = false;
    this.savedAt = 0;
    this.clock = new Clock((time) => this.onTime(time));
    this.stage = new Stage(
      host,
      this.views.map((view) => view.element),
      start.index,
    );
    this.current = this.views[start.index];
    this.stage.onChange = (index) => this.onChange(index);
    this.stage.onCovered = (index) => this.views[index].leave();
    this.connectControls();
    // Captions move by shares of the slide, whether time passes or not.
    new ResizeObserver(() => this.clock.seek(this.clock.time)).observe(host);
    /** Settles when the first slide can be seen. */
    this.ready = this.show(start.index, start.time);
  }

  /** @returns {Start} */
  findStart() {
    const place = loadPlace();
    if (!place) return { index: 0, time: 0, paused: false, stopAt: Infinity };
    const change = findChange(place, this.marks);
    if (!change)
      return { index: place.index, time: place.time, paused: place.paused, stopAt: Infinity };
    const timing =
      change.caption === null ? null : this.views[change.index].timing.captions[change.caption];
    const time = timing ? Math.max(timing.enter - kRunUp, 0) : 0;
    // Someone who paused wants to see the change all the same, and then to go on looking at it.
    const settled = timing?.arrived ?? settledTime(this.views[change.index].timing);
    return { index: change.index, time, paused: false, stopAt: place.paused ? settled : Infinity };
  }

  connectControls() {
    this.stage.pause.addEventListener("click", () => this.setPaused(!this.paused));
    document.addEventListener("keydown", (event) => this.onKey(event));
    document.addEventListener("visibilitychange", () => this.run());
    addEventListener("pagehide", () => this.save());
  }

  /** @param {KeyboardEvent} event */
  onKey(event) {
    if (event.altKey || event.ctrlKey || event.metaKey || event.shiftKey) return;
    if (event.key === "ArrowLeft") this.stage.goPrevious();
    else if (event.key === "ArrowRight") this.stage.goNext();
    else if (event.key === " " && !(event.target instanceof HTMLButtonElement))
      this.setPaused(!this.paused);
    else return;
    event.preventDefault();
  }

  /** @param {number} index */
  onChange(index) {
    this.stopAt = Infinity;
    // A slide that stands still is worth looking at only with its captions.
    this.show(index, this.paused ? settledTime(this.views[index].timing) : 0);
  }

  /**
   * Puts a slide on show from a given time.
   * @param {number} index
   * @param {number} time
   */
  async show(index, time) {
    const visit = ++this.visit;
    this.clock.stop();
    this.current = this.views[index];
    document.documentElement.dataset.slide = String(index);
    this.stage.notice.clear();
    this.current.enter();
    this.clock.seek(time);
    this.loading = true;
    const loaded = await this.current.load();
    if (visit !== this.visit) return;
    this.loading = false;
    if (!loaded) this.sayMissing();
    document.documentElement.dataset.ready = "";
    this.views[(index + 1) % this.views.length].load();
    this.run();
    this.save();
  }

  /** @param {SlideView} view whose picture or movie turned out not to be there after all */
  onFailure(view) {
    if (view === this.current) this.sayMissing();
  }

  sayMissing() {
    this.stage.notice.show(`“${this.current.slide.media}” cannot be shown.`);
  }

  /** @param {number} time */
  onTime(time) {
    this.current.seek(time);
    if (Math.abs(time - this.savedAt) >= kSaveEvery) this.save();
    if (time >= this.stopAt) this.setPaused(true);
    else if (time >= this.current.timing.duration && this.clock.running) this.advance();
  }

  advance() {
    if (this.views.length > 1) this.stage.goNext();
    else this.clock.seek(0);
  }

  /** @param {boolean} paused */
  setPaused(paused) {
    this.paused = paused;
    this.stopAt = Infinity;
    this.run();
    this.save();
  }

  /** Lets time pass exactly while the slide is to be seen moving. */
  run() {
    this.stage.setPaused(this.paused);
    const resting = this.paused || document.hidden;
    this.current.setPaused(resting);
    if (resting || this.loading) this.clock.stop();
    else this.clock.start();
  }

  save() {
    this.savedAt = this.clock.time;
    savePlace({
      slides: this.marks,
      index: this.stage.index,
      time: this.clock.time,
      paused: this.paused,
    });
  }
}
