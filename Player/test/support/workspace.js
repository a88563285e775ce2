// Workspaces for the browser tests: the built page, a document and media files in a temporary
// folder.

import { cp, mkdir, mkdtemp, rm, symlink, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { solidPicture } from "./picture.js";

/** @returns {string} its folder */
export function builtPage() {
  const page = process.env.VIREONIX_PLAYER_HTML;
  if (!page) throw new Error("VIREONIX_PLAYER_HTML does not name the folder of the built page");
  return page;
}

/**
 * @typedef {object} CaptionSource
 * @property {string} [text]
 * @property {string} [size]
 * @property {string} [color]
 * @property {Record<string, string>} [attributes]
 */

/** @typedef {{ media?: string, captions?: CaptionSource[] }} SlideSource */

/** @param {string} value */
function quoted(value) {
  return `"${value.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/"/g, "&quot;")}"`;
}

/** @param {CaptionSource} caption */
function captionXml({ text = "Text", size = "24", color = "#FFFFFF", attributes = {} }) {
  const values = Object.entries({ In_Time: "0", Stay_Time: "5", ...attributes });
  const list = values.map(([name, value]) => ` ${name}=${quoted(value)}`).join("");
  const markup = `<b><font size="${size}" color="${color}">${text}</font></b>`;
  const section = `<![CDATA[${markup.replace(/]]>/g, "]]]]><![CDATA[>")}]]>`;
  return `<text${list}><text>${section}</text></text>`;
}

/** @param {SlideSource[]} slides @param {string} [styles] */
export function documentXml(slides, styles = "") {
  const list = slides.map(({ media = "a.png", captions = [] }) => {
    return `<slide Background_image=${quoted(media)}>${captions.map(captionXml).join("")}</slide>`;
  });
  return (
    `<?xml version="1.0" encoding="utf-8"?>\n<main><define_animation_Style>${styles}` +
    `</define_animation_Style><data>${list.join("")}</data></main>`
  );
}

export class Workspace {
  /** @param {string} folder */
  constructor(folder) {
    this.folder = folder;
  }

  /** A workspace whose pictures are a.png (teal) and b.png (amber). */
  static async make() {
    const page = builtPage();
    const workspace = new Workspace(await mkdtemp(join(tmpdir(), "player-")));
    await cp(join(page, "index.html"), join(workspace.folder, "index.html"));
    await symlink(join(page, "js"), join(workspace.folder, "js"));
    await workspace.write("a.png", solidPicture(20, 110, 120));
    await workspace.write("b.png", solidPicture(190, 130, 30));
    return workspace;
  }

  /** @param {string} name @param {string | Uint8Array} content */
  async write(name, content) {
    const path = join(this.folder, name);
    await mkdir(dirname(path), { recursive: true });
    await writeFile(path, content);
  }

  /** @param {SlideSource[]} slides @param {string} [styles] */
  async writeSlides(slides, styles) {
    await this.write("intro_asset/data.xml", documentXml(slides, styles));
  }

  /** Makes the scripts a copy of its own, where a link would not do. */
  async copyScripts() {
    await rm(join(this.folder, "js"));
    await cp(join(builtPage(), "js"), join(this.folder, "js"), { recursive: true });
  }

  async remove() {
    await rm(this.folder, { recursive: true, force: true });
  }
}
