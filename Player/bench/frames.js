// How fluently fifty captions enter letter by letter, all at once, in the browser: the time from one
// drawn frame to the next, beside a page on which nothing but a small box moves, and how much the
// page's main thread works for a frame.
//
// Prints one line of JSON for each row of the table, as the other benchmarks do.

import { setTimeout } from "node:timers/promises";

import { chromium } from "playwright-core";
import { serve } from "../test/support/server.js";
import { Workspace } from "../test/support/workspace.js";

const kCaptions = 50;
const kRounds = process.env.VIREONIX_BENCH_QUICK ? 2 : 15;
/** Milliseconds; as long as letters are on their way. */
const kMeasured = 1400;
/** Milliseconds that the browser gets to end. */
const kPatience = 5000;
/** A second. */
const kFrames = 60;
const kAnchors = ["TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"];
const kSmallBox = `<!doctype html><title>Box</title><body style="background: #14161a">
<div style="width: 8px; height: 8px; background: #fff"></div><script>
const box = document.querySelector("div");
const turn = (now) => {
  box.style.transform = "translateX(" + (now / 10) % 200 + "px)";
  if (window.runs) requestAnimationFrame(turn);
};
const set = (runs) => {
  window.runs = runs;
  if (runs) requestAnimationFrame(turn);
};
</script>`;

/** @typedef {import("playwright-core").CDPSession} Devtools */
/** @typedef {import("playwright-core").Page} Page */
/**
 * @typedef {object} Sample
 * @property {number} interval seconds from one drawn frame to the next
 * @property {number} work seconds that the page's main thread works for one of them
 */

const kSlide = {
  captions: Array.from({ length: kCaptions }, (_, index) => ({
    text: `Caption number ${index}`,
    size: "8",
    attributes: {
      Align: kAnchors[index % kAnchors.length],
      set_animation_style: "Slide",
      Text_Animation_LetterByLetter: "1",
      Animation_Start_Direction: String(index % 8),
    },
  })),
};

/**
 * @param {Devtools} devtools
 * @returns {Promise<{ now: number, work: number }>} seconds on the clock of the machine, and those
 *   that the main thread has worked
 */
async function mainThread(devtools) {
  const { metrics } = await devtools.send("Performance.getMetrics");
  const value = (/** @type {string} */ name) =>
    metrics.find((one) => one.name === name)?.value ?? 0;
  return { now: value("Timestamp"), work: value("TaskDuration") };
}

/** A page of which frames are counted while it moves. */
class Moving {
  /** @param {Page} page @param {Devtools} devtools @param {string} start @param {string} stop */
  constructor(page, devtools, start, stop) {
    this.page = page;
    this.devtools = devtools;
    this.start = start;
    this.stop = stop;
  }

  /** @param {Page} page @param {string} start @param {string} stop scripts that let it move */
  static async make(page, start, stop) {
    const devtools = await page.context().newCDPSession(page);
    // Of its own processor time: what else the machine does counts only where it delays a frame.
    await devtools.send("Performance.enable", { timeDomain: "threadTicks" });
    await page.evaluate(stop);
    return new Moving(page, devtools, start, stop);
  }

  /** @returns {Promise<Sample>} */
  async measure() {
    const browser = /** @type {import("playwright-core").Browser} */ (
      this.page.context().browser()
    );
    const categories = ["disabled-by-default-devtools.timeline.frame"];
    await this.page.bringToFront();
    await browser.startTracing(this.page, { categories });
    await this.page.evaluate(this.start);
    const before = await mainThread(this.devtools);
    await this.page.waitForTimeout(kMeasured);
    const after = await mainThread(this.devtools);
    await this.page.evaluate(this.stop);
    const { traceEvents } = JSON.parse((await browser.stopTracing()).toString());
    // Both clocks are the machine's.
    const isWithin = (/** @type {any} */ { name, ts }) =>
      name === "DrawFrame" && ts / 1e6 >= before.now && ts / 1e6 <= after.now;
    const frames = traceEvents.filter(isWithin).length;
    if (frames === 0) throw new Error("no frames were drawn");
    return {
      interval: (after.now - before.now) / frames,
      work: (after.work - before.work) / frames,
    };
  }
}

/** @param {Record<string, unknown>} row */
function print(row) {
  console.log(JSON.stringify({ ...row, share: 0.5 }));
}

/** @param {Moving} player @param {Moving} box */
async function measureBoth(player, box) {
  /** @type {Sample[]} */
  const ours = [];
  /** @type {Sample[]} */
  const theirs = [];
  for (let round = 0; round <= kRounds; ++round) {
    ours.push(await player.measure());
    theirs.push(await box.measure());
  }
  // The first ones warm up.
  ours.shift();
  theirs.shift();
  print({
    what: "from one drawn frame to the next, 50 captions letter by letter",
    reference: "a page on which a small box moves",
    unit: "s",
    ours: ours.map(({ interval }) => interval),
    theirs: theirs.map(({ interval }) => interval),
    judged: "ratio",
    limit: 1.05,
  });
  print({
    what: "work of the page's main thread for one of these frames, of a sixtieth of a second",
    unit: "%",
    ours: ours.map(({ work }) => 100 * kFrames * work),
    judged: "ours",
    limit: 50,
  });
}

const workspace = await Workspace.make();
await workspace.writeSlides([kSlide]);
await workspace.write("box.html", kSmallBox);
const server = await serve(workspace.folder);
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  args: ["--headless", "--no-sandbox", "--disable-gpu"],
});
try {
  const context = await browser.newContext({ viewport: { width: 960, height: 600 } });
  const [player, box] = [await context.newPage(), await context.newPage()];
  await player.goto(`${server.origin}/index.html`);
  await player.waitForSelector("html[data-ready]");
  await box.goto(`${server.origin}/box.html`);
  await measureBoth(
    await Moving.make(
      player,
      "vireonixPlayer.seek(0), vireonixPlayer.play()",
      "vireonixPlayer.pause()",
    ),
    await Moving.make(box, "set(true)", "set(false)"),
  );
} finally {
  // The browser's farewell is not always answered.
  await Promise.race([browser.close(), setTimeout(kPatience)]);
  server.close();
  await workspace.remove();
}
process.exit();
