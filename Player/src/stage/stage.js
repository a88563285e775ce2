// The stage: all slides one upon another, one of them on show, and the controls to move between
// them.

import { make } from "./elements.js";
import { Notice } from "./notice.js";
import { swipes } from "./swipe.js";
import { wakes } from "./wake.js";

/** More slides than this are counted in words rather than shown as dots. */
const kMostDots = 15;

/** @param {string} name @param {string} label */
function button(name, label) {
  return make("button", { class: name, type: "button", "aria-label": label });
}

/** @param {HTMLElement} slide @param {number} index @param {number} count */
function describe(slide, index, count) {
  slide.setAttribute("role", "group");
  slide.setAttribute("aria-roledescription", "slide");
  slide.setAttribute("aria-label", `${index + 1} of ${count}`);
}

export class Stage {
  /**
   * @param {HTMLElement} host
   * @param {HTMLElement[]} slides at least one
   * @param {number} first index of the slide that is on show at once
   */
  constructor(host, slides, first) {
    this.slides = slides;
    this.index = first;
    /** The slide that the one on show is still covering; -1 for none. */
    this.covering = -1;
    /** Told of another slide on show, by whatever means it came there. */
    this.onChange = (/** @type {number} */ index) => {};
    /** Told of a slide that can be seen no more. */
    this.onCovered = (/** @type {number} */ index) => {};
    this.notice = new Notice();
    this.previous = button("control previous", "Previous slide");
    this.pause = button("control pause", "Pause");
    this.next = button("control next", "Next slide");
    this.dots = slides.length > kMostDots ? [] : this.makeDots();
    this.counter = make("span", { class: "counter", "aria-hidden": "true" });
    this.frame = make("div", { class: "slides" }, slides);
    this.element = this.makeElement();
    slides.forEach((slide, index) => describe(slide, index, slides.length));
    this.mark();
    this.setPaused(false);
    this.connect();
    host.replaceChildren(this.element);
  }

  makeDots() {
    return this.slides.map((_, index) => {
      const dot = button("dot", `Go to slide ${index + 1}`);
      dot.addEventListener("click", () => this.goTo(index));
      return dot;
    });
  }

  makeElement() {
    const places = this.dots.length > 0 ? this.dots : [this.counter];
    const controls = make("div", { class: "controls" }, [
      this.previous,
      this.pause,
      make("div", { class: "dots" }, places),
      this.next,
    ]);
    const attributes = {
      class: "stage",
      role: "region",
      "aria-roledescription": "carousel",
      "aria-label": "Slides",
      tabindex: "0",
      "data-single": this.slides.length < 2 ? "" : undefined,
    };
    return make("div", attributes, [this.frame, controls, this.notice.element]);
  }

  connect() {
    this.previous.addEventListener("click", () => this.goPrevious());
    this.next.addEventListener("click", () => this.goNext());
    this.frame.addEventListener("animationend", ({ target }) => {
      if (target === this.slides[this.index]) this.uncover();
    });
    wakes(this.element);
    swipes(this.frame, (step) => (step > 0 ? this.goNext() : this.goPrevious()));
  }

  /** @param {number} index */
  goTo(index) {
    const from = this.index;
    if (index === from || !this.slides[index]) return;
    if (this.covering !== index) this.uncover();
    this.covering = from;
    this.index = index;
    this.element.dataset.changed = "";
    this.mark();
    // Where slides change by a cut, nothing is seen of the one before.
    if (this.slides[index].getAnimations().length === 0) this.uncover();
    this.onChange(index);
  }

  goNext() {
    this.goTo((this.index + 1) % this.slides.length);
  }

  goPrevious() {
    this.goTo((this.index + this.slides.length - 1) % this.slides.length);
  }

  /** The slide on show covers the one before it. */
  uncover() {
    const covered = this.covering;
    if (covered < 0) return;
    this.covering = -1;
    this.mark();
    this.onCovered(covered);
  }

  /** Says which slides are to be seen; only the one on show is there for screen readers and keys. */
  mark() {
    this.slides.forEach((slide, index) => {
      slide.classList.toggle("current", index === this.index);
      slide.classList.toggle("covered", index === this.covering);
      slide.inert = index !== this.index;
    });
    this.dots.forEach((dot, index) => {
      if (index === this.index) dot.setAttribute("aria-current", "true");
      else dot.removeAttribute("aria-current");
    });
    this.counter.textContent = `${this.index + 1} / ${this.slides.length}`;
  }

  /** @param {boolean} paused */
  setPaused(paused) {
    this.element.dataset.paused = String(paused);
    this.pause.setAttribute("aria-label", paused ? "Play" : "Pause");
    // Slides that change by themselves would talk over everything else.
    this.frame.setAttribute("aria-live", paused ? "polite" : "off");
  }
}
