// The stage: all slides one upon another, one of them on show, and the controls to move between
// them.

import Swiper from "swiper";
import { A11y, EffectFade, Navigation, Pagination } from "swiper/modules";
import { make } from "./elements.js";
import { Notice } from "./notice.js";

const kFade = 900;

/** @param {string} name @param {string} label */
function button(name, label) {
  return make("button", { class: `control ${name}`, type: "button", "aria-label": label });
}

export class Stage {
  /**
   * @param {HTMLElement} host
   * @param {HTMLElement[]} slides
   * @param {number} first index of the slide that is on show at once
   * @param {boolean} still whether slides change by a cut
   */
  constructor(host, slides, first, still) {
    this.notice = new Notice();
    this.previous = button("previous", "Previous slide");
    this.next = button("next", "Next slide");
    this.pause = button("pause", "Pause");
    this.dots = make("div", { class: "dots" });
    const controls = make("div", { class: "controls" }, [
      this.previous,
      this.pause,
      this.dots,
      this.next,
    ]);
    controls.hidden = slides.length === 0;
    this.wrapper = make("div", { class: "swiper-wrapper" }, slides);
    this.element = make(
      "div",
      {
        class: "swiper stage",
        role: "region",
        "aria-roledescription": "carousel",
        "aria-label": "Slides",
        tabindex: "0",
      },
      [this.wrapper, controls, this.notice.element],
    );
    if (slides.length < 2) this.element.dataset.single = "";
    host.replaceChildren(this.element);
    this.swiper = this.makeSwiper(first, still);
    this.setPaused(false);
  }

  /** @param {number} first @param {boolean} still */
  makeSwiper(first, still) {
    return new Swiper(this.element, {
      modules: [A11y, EffectFade, Navigation, Pagination],
      effect: "fade",
      fadeEffect: { crossFade: false },
      speed: still ? 0 : kFade,
      initialSlide: first,
      rewind: true,
      runCallbacksOnInit: false,
      navigation: { prevEl: this.previous, nextEl: this.next, addIcons: false },
      pagination: { el: this.dots, clickable: true },
      a11y: {
        slideRole: "group",
        slideLabelMessage: "{{index}} of {{slidesLength}}",
        itemRoleDescriptionMessage: "slide",
      },
    });
  }

  get index() {
    return this.swiper.activeIndex;
  }

  /**
   * @param {(index: number) => void} handler called when another slide comes on show, by whatever
   *   means
   */
  onChange(handler) {
    this.swiper.on("slideChange", () => handler(this.swiper.activeIndex));
  }

  /** @param {number} index */
  goTo(index) {
    this.swiper.slideTo(index);
  }

  goNext() {
    this.swiper.slideNext();
  }

  goPrevious() {
    this.swiper.slidePrev();
  }

  /** @param {boolean} paused */
  setPaused(paused) {
    this.element.dataset.paused = String(paused);
    this.pause.setAttribute("aria-label", paused ? "Play" : "Pause");
    // Slides that change by themselves would talk over everything else.
    this.wrapper.setAttribute("aria-live", paused ? "polite" : "off");
  }

  /** Only the slide on show is there for screen readers and the keyboard. */
  markCurrent() {
    this.swiper.slides.forEach((slide, index) => {
      slide.inert = index !== this.swiper.activeIndex;
    });
  }
}
