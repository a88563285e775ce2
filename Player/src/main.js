// The page: reads the slider document beside it and plays it.

import template from "../../Resources/data/intro_asset/data.xml";
import { readSliderDocument } from "./document/slider_document.js";
import { Player } from "./player.js";
import { kFromFolder, readDocument, takeFolder } from "./reading.js";
import { folderChooser, plainMessage } from "./stage/notice.js";

const kDocument = "intro_asset/data.xml";

/**
 * @param {HTMLElement} host
 * @param {string} title
 * @param {string} text
 * @param {Node[]} [controls] what can be done about it
 */
function explain(host, title, text, controls = []) {
  host.replaceChildren(plainMessage(title, text, controls));
  document.documentElement.dataset.ready = "";
}

/** @param {HTMLElement} host */
function explainUnreadable(host) {
  if (kFromFolder)
    explain(
      host,
      "One more step to see these slides",
      "The page was opened straight from a folder, and this browser does not let such a page " +
        "read the files beside it. Choose that folder here, or put it on a web server. " +
        "Nothing leaves this computer.",
      folderChooser((files) => playFolder(host, files)),
    );
  else
    explain(
      host,
      "There are no slides yet",
      `The file ${kDocument} beside this page cannot be read.`,
    );
}

/** @param {HTMLElement} host @param {Iterable<File>} files of the folder that the user chose */
async function playFolder(host, files) {
  takeFolder(files);
  const source = await readDocument(kDocument);
  if (source !== null) return play(host, source);
  explain(
    host,
    "This is not the slides’ folder",
    `It holds no ${kDocument}. Choose the folder that holds this page.`,
    folderChooser((others) => playFolder(host, others)),
  );
}

/** @param {HTMLElement} host @param {string} source the document's text */
function play(host, source) {
  const slider = readSliderDocument(source, template);
  if (!slider)
    return explain(host, "The slides cannot be read", `${kDocument} is not a slider document.`);
  if (slider.slides.length === 0)
    return explain(host, "There are no slides yet", "Add a picture to begin.");
  publish(new Player(host, slider.slides));
}

async function start() {
  const host = document.getElementById("player") ?? document.body;
  const read = readDocument(kDocument);
  const source = read instanceof Promise ? await read : read;
  if (source === null) explainUnreadable(host);
  else play(host, source);
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
