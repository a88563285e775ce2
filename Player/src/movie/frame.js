// Runs inside the movie's frame: takes the emulator and the movie from the page, and plays.
//
// The frame has an origin of its own and may not ask the network for anything, so whatever the
// emulator needs arrives in one message.

/**
 * @typedef {object} Delivery
 * @property {string[]} scripts in the order in which they run
 * @property {ArrayBuffer} wasm
 * @property {ArrayBuffer} movie
 */

/** @typedef {"pause" | "play"} Order */

// A movie is a moving picture here: it reaches no script, no network, no address, no menu and no
// full screen.
const kSettings = {
  allowScriptAccess: false,
  allowNetworking: "none",
  allowFullscreen: false,
  autoplay: "on",
  contextMenu: "off",
  credentialAllowList: [],
  letterbox: "on",
  logLevel: "error",
  maxExecutionDuration: 5,
  menu: false,
  openUrlMode: "deny",
  polyfills: false,
  showSwfDownload: false,
  socketProxy: [],
  splashScreen: false,
  unmuteOverlay: "hidden",
  warnOnUnsupportedContent: false,
};

/**
 * Where the system names no language, some browsers name one that is none, and the emulator does
 * not start.
 */
function ensureLanguage() {
  try {
    new Intl.Locale(navigator.language);
  } catch {
    Object.defineProperty(navigator, "language", { value: "en" });
    Object.defineProperty(navigator, "languages", { value: ["en"] });
  }
}

/** @param {Delivery} delivery @returns {Promise<any>} the emulator's player */
async function play({ scripts, wasm, movie }) {
  const frame = /** @type {any} */ (window);
  ensureLanguage();
  frame.RufflePlayer = { config: kSettings };
  // What starts by itself plays without sound.
  frame.AudioContext = frame.webkitAudioContext = undefined;
  // A movie that is not to be seen rests: the emulator would go on in a worker, which this frame's
  // policy refuses with a complaint.
  frame.Worker = undefined;
  // The only thing that the emulator fetches is its own program.
  frame.fetch = async () => new Response(wasm, { headers: { "Content-Type": "application/wasm" } });
  for (const source of scripts) {
    const script = document.createElement("script");
    script.textContent = source;
    document.head.append(script);
  }
  const player = frame.RufflePlayer.newest().createPlayer();
  document.body.append(player);
  await player.ruffle().load({ data: movie, ...kSettings });
  return player.ruffle();
}

/** @param {any} player @param {MessagePort} port on which the page's orders arrive */
function obey(player, port) {
  port.onmessage = ({ data }) => {
    if (data === "pause") player.suspend();
    else player.resume();
  };
  port.postMessage("playing");
}

addEventListener(
  "message",
  ({ data, ports: [port] }) => {
    const failed = () => port.postMessage("failed");
    addEventListener("error", failed);
    addEventListener("unhandledrejection", failed);
    play(data).then((player) => obey(player, port), failed);
  },
  { once: true },
);
