// Pictures of the player for people to look at: files in a folder, and a sheet that shows them all.

import { mkdir, writeFile } from "node:fs/promises";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

/** @typedef {{ name: string, title: string }} Entry */

const kStyle =
  "body { margin: 24px; background: #202226; color: #eee; font: 13px sans-serif } " +
  "h1 { font-size: 20px; margin: 0 0 16px } h2 { font-size: 14px; margin: 20px 0 8px } " +
  "section > div { display: flex; flex-wrap: wrap; gap: 8px } figure { margin: 0 } " +
  "img { display: block; width: 288px } figcaption { margin-top: 3px; color: #aaa }";

export class Album {
  /** @param {string} folder */
  constructor(folder) {
    this.folder = folder;
    /** @type {Map<string, Entry[]>} */
    this.sections = new Map();
  }

  /** @param {string} folder made when it is missing */
  static async open(folder) {
    await mkdir(folder, { recursive: true });
    return new Album(folder);
  }

  /**
   * @param {import("playwright-core").Page} page of which a picture is taken
   * @param {string} section of the sheet
   * @param {string} name of the file, without its ending
   * @param {string} title
   * @returns {Promise<Buffer>} the picture
   */
  async add(page, section, name, title) {
    const picture = await page.screenshot({ path: join(this.folder, `${name}.png`) });
    const entries = this.sections.get(section) ?? [];
    entries.push({ name, title });
    this.sections.set(section, entries);
    return picture;
  }

  /** Writes the sheet, as a page and as a picture. @param {import("playwright-core").Page} page */
  async close(page) {
    const figure = (/** @type {Entry} */ { name, title }) =>
      `<figure><img src="${encodeURIComponent(name)}.png"><figcaption>${title}</figcaption></figure>`;
    const sections = [...this.sections].map(
      ([title, entries]) =>
        `<section><h2>${title}</h2><div>${entries.map(figure).join("")}</div></section>`,
    );
    const sheet = join(this.folder, "index.html");
    await writeFile(
      sheet,
      `<!doctype html><meta charset="utf-8"><title>The player</title><style>${kStyle}</style>` +
        `<h1>The player</h1>${sections.join("")}`,
    );
    await page.setViewportSize({ width: 1532, height: 900 });
    await page.goto(pathToFileURL(sheet).href);
    await page.screenshot({ path: join(this.folder, "contact-sheet.png"), fullPage: true });
  }
}
