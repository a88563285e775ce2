// The page: reads the slider document beside it and plays it.

import template from "../../Resources/data/intro_asset/data.xml";
import { readSliderDocument } from "./document/slider_document.js";
import { Player } from "./player.js";
import { kFromFolder, readDocument } from "./reading.js";
import { plainMessage } from "./stage/notice.js";

const kDocument = "intro_asset/data.xml";

/** @param {HTMLElement} host @param {string} title @param {string} text */
function explain(host, title, text) {
  host.replaceChildren(plainMessage(title, text));
  document.documentElement.dataset.ready = "";
}

/** @param {HTMLElement} host */
function explainUnreadable(host) {
  if (kFromFolder)
    explain(
      host,
      "These slides need a web server",
      "The page was opened straight from a folder, and this browser does not let such a page " +
        "read the files beside it. Put the folder on a web server, or open the page in the " +
        "preview of the slide editor.",
    );
  else
    explain(
      host,
      "There are no slides yet",
      `The file ${kDocument} beside this page cannot be read.`,
    );
}

async function start() {
  const host = document.getElementById("player") ?? document.body;
  const read = readDocument(kDocument);
  const source = read instanceof Promise ? await read : read;
  if (source === null) return explainUnreadable(host);
  const slider = readSliderDocument(source, template);
  if (!slider)
    return explain(host, "The slides cannot be read", `${kDocument} is not a slider document.`);
  if (slider.slides.length === 0)
    return explain(host, "There are no slides yet", "Add a picture to begin.");
  const player = new Player(host, slider.slides);
  publish(player);
}

/**
 * What tests and pages around the player may use; README.md describes it.
 * @param {Player} player
 */
function publish(player) {
  const hook = {
    ready: player.ready,
    get currentSlide() {
      return player.stage.index;
    },
    get slideCount() {
      return player.views.length;
    },
    get time() {
      return player.clock.time;
    },
    get duration() {
      return player.current.timing.duration;
    },
    get paused() {
      return player.paused;
    },
    goTo: (/** @type {number} */ index) => player.stage.goTo(index),
    pause: () => player.setPaused(true),
    play: () => player.setPaused(false),
    hold: () => player.clock.hold(),
    release: () => player.clock.release(),
    seek: (/** @type {number} */ time) => player.clock.seek(time),
  };
  Object.defineProperty(window, "vireonixPlayer", { value: Object.freeze(hook) });
}

start();
