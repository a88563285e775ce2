// One slide on the stage: its picture or movie, and its captions at their anchors.

import { kAnchors } from "../document/fields.js";
import { isMovie } from "../document/media.js";
import { SlideTimeline } from "../motion/timeline.js";
import { slideTiming } from "../motion/timing.js";
import { Movie } from "../movie/movie.js";
import { CaptionView } from "./caption_view.js";
import { make } from "./elements.js";
import { Picture } from "./picture.js";

/** @typedef {import("../document/slider_document.js").Slide} Slide */

export class SlideView {
  /** @param {Slide} slide @param {boolean} still whether captions appear and go at once */
  constructor(slide, still) {
    this.slide = slide;
    this.still = still;
    const Media = isMovie(slide.media) ? Movie : Picture;
    this.media = new Media(slide.media, still);
    /** @type {SlideTimeline | null} */
    this.timeline = null;
    /** @type {ReturnType<SlideView["makeScene"]> | null} */
    this.madeScene = null;
    this.element = make("div", { class: "slide" }, [this.media.element]);
  }

  /** The captions and their times; made when they are first asked for, as most slides wait long. */
  get scene() {
    this.madeScene ??= this.makeScene();
    return this.madeScene;
  }

  get timing() {
    return this.scene.timing;
  }

  makeScene() {
    const captions = this.slide.captions.map((caption) => new CaptionView(caption));
    const entries = captions.map(({ caption, parts }) => ({ caption, parts: parts.length }));
    const timing = slideTiming(entries, this.still);
    captions.forEach((view, index) => view.setLane(timing.captions[index].lane));
    const anchors = kAnchors.map((anchor) => {
      const views = captions.filter(({ caption }) => caption.anchor === anchor);
      return make(
        "div",
        { class: "anchor", "data-anchor": anchor },
        views.map((view) => view.element),
      );
    });
    const used = anchors.filter((anchor) => anchor.hasChildNodes());
    this.element.append(make("div", { class: "captions" }, used));
    return { captions, timing };
  }

  /** @returns {Promise<boolean>} whether there is something behind the captions */
  async load() {
    if (this.slide.media === "") return true;
    const there = await this.media.load();
    if (this.media instanceof Movie)
      this.timing.duration = Math.max(this.timing.duration, this.media.seconds * 1000);
    return there;
  }

  /** The slide comes on show. */
  enter() {
    this.rewind();
    if (this.media instanceof Movie) this.media.play();
  }

  /** The captions begin again. */
  rewind() {
    this.timeline?.remove();
    const { captions, timing } = this.scene;
    const moving = captions.map(({ caption, element, parts }, index) => {
      return { caption, element, parts, timing: timing.captions[index] };
    });
    this.timeline = new SlideTimeline(this.element, moving, this.still);
  }

  /** The slide has gone. */
  leave() {
    this.timeline?.remove();
    this.timeline = null;
    for (const { element } of this.madeScene?.captions ?? []) element.dataset.state = "waiting";
    if (this.media instanceof Movie) this.media.stop();
  }

  /** @param {boolean} paused */
  setPaused(paused) {
    if (this.media instanceof Movie) this.media.setPaused(paused);
  }

  /** @param {number} time milliseconds from the slide's start */
  seek(time) {
    this.timeline?.seek(time);
    const scale = this.still ? 1 : 1 + 0.05 * Math.min(time / this.timing.duration, 1);
    if (this.media instanceof Picture) this.media.setScale(scale);
  }
}
