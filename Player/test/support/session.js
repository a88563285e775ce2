// One page of the real browser on one workspace, watched for complaints and for requests that
// leave it.

import assert from "node:assert/strict";
import { after, before } from "node:test";
import { chromium } from "playwright-core";
import { serve } from "./server.js";
import { Workspace, builtPage } from "./workspace.js";

// The tests' pages come from one site, and share the process that a page kept open keeps alive.
const kFlags = [
  ...["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run"],
  ...["--disable-background-networking", "--disable-component-update", "--disable-sync"],
  "--process-per-site",
];

/** @type {import("playwright-core").BrowserContextOptions} */
const kOptions = { viewport: { width: 960, height: 600 } };

/** @type {import("playwright-core").Browser} */
let browser;
/** @type {import("playwright-core").BrowserContext} */
let sharedContext;
/** @type {{ origin: string, close: () => void }} */
let keptServer;
before(async () => {
  const executablePath = process.env.CHROMIUM ?? "/usr/bin/chromium";
  browser = await chromium.launch({ executablePath, args: kFlags });
  sharedContext = await browser.newContext(kOptions);
  keptServer = await serve(builtPage());
  await (await sharedContext.newPage()).goto(`${keptServer.origin}/index.html`);
});
after(async () => {
  await browser.close();
  keptServer.close();
});

export class Session {
  /**
   * @param {Workspace} workspace
   * @param {{ origin: string, close: () => void }} server
   * @param {import("playwright-core").Page} page
   */
  constructor(workspace, server, page) {
    this.workspace = workspace;
    this.server = server;
    this.page = page;
    /** @type {string[]} */
    this.complaints = [];
    page.on(
      "console",
      (message) => message.type() === "error" && this.complaints.push(message.text()),
    );
    page.on("pageerror", (error) => this.complaints.push(String(error)));
    page.on("request", (request) => this.watch(request.url()));
  }

  /** @param {string} url */
  watch(url) {
    const inside = url.startsWith(`${this.server.origin}/`);
    if (!inside && !/^(data|blob|about|file):/.test(url)) this.complaints.push(`request to ${url}`);
  }

  /**
   * @param {import("node:test").TestContext} context at whose end all must be well
   * @param {import("playwright-core").BrowserContextOptions} [options] for a browser of its own
   */
  static async start(context, options) {
    const workspace = await Workspace.make();
    const server = await serve(workspace.folder);
    const ownContext = options && (await browser.newContext({ ...kOptions, ...options }));
    const page = await (ownContext ?? sharedContext).newPage();
    const session = new Session(workspace, server, page);
    context.after(async () => {
      await (ownContext ?? page).close();
      server.close();
      await workspace.remove();
      assert.deepEqual(session.complaints, []);
    });
    return session;
  }

  /** Loads the page, or loads it again, and takes its clock in hand. */
  async load() {
    await this.page.goto(`${this.server.origin}/index.html`);
    await this.page.waitForSelector("html[data-ready]");
    await this.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer?.hold());
  }

  /** Loads the page straight from its folder. */
  async openFromFolder() {
    await this.page.goto(`file://${this.workspace.folder}/index.html`);
    await this.page.waitForSelector("html[data-ready]");
  }

  /** @param {import("./workspace.js").SlideSource[]} slides @param {string} [styles] */
  async show(slides, styles) {
    await this.workspace.writeSlides(slides, styles);
    await this.load();
  }

  /** @param {number} time milliseconds */
  async seek(time) {
    await this.page.evaluate((at) => /** @type {any} */ (window).vireonixPlayer.seek(at), time);
  }

  /**
   * @returns {Promise<{ currentSlide: number, time: number, duration: number, paused: boolean }>}
   */
  async state() {
    return this.page.evaluate(() => {
      const { currentSlide, time, duration, paused } = /** @type {any} */ (window).vireonixPlayer;
      return { currentSlide, time, duration, paused };
    });
  }

  /** @param {number} index */
  async waitForSlide(index) {
    await this.page.waitForSelector(`html[data-slide="${index}"]`);
  }

  /** Waits until the fade from one slide to the next is over. */
  async settle() {
    await this.page.waitForFunction(() => {
      const slide = document.querySelector(".slide.current");
      return slide !== null && getComputedStyle(slide).opacity === "1";
    });
  }
}
