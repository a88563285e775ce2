// Says quietly, in a corner, what could not be shown; or plainly, in the middle, why nothing can.

import { make } from "./elements.js";

export class Notice {
  constructor() {
    this.element = make("p", { class: "notice", role: "status", hidden: "" });
  }

  /** @param {string} text */
  show(text) {
    this.element.textContent = text;
    this.element.hidden = false;
  }

  clear() {
    this.element.hidden = true;
    this.element.textContent = "";
  }
}

/** @param {string} title @param {string} text */
export function plainMessage(title, text) {
  return make("main", { class: "message", role: "alert" }, [
    make("h1", { text: title }),
    make("p", { text }),
  ]);
}
