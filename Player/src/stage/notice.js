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

/** @param {string} title @param {string} text @param {Node[]} controls */
export function plainMessage(title, text, controls) {
  return make("main", { class: "message", role: "alert" }, [
    make("h1", { text: title }),
    make("p", { text }),
    ...controls,
  ]);
}

/**
 * A button that lets the user choose a folder.
 * @param {(files: File[]) => void} onChoice called with all files of the folder
 * @returns {Node[]}
 */
export function folderChooser(onChoice) {
  const input = make("input", { type: "file", webkitdirectory: "", hidden: "" });
  const open = make("button", { type: "button", class: "choose", text: "Choose the folder…" });
  open.addEventListener("click", () => input.click());
  input.addEventListener("change", () => onChoice([...(input.files ?? [])]));
  return [open, input];
}
