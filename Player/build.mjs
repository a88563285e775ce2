// Builds the page into a folder: node build.mjs [folder].

import { build } from "esbuild";
import { cp, mkdir, readFile, rm, writeFile } from "node:fs/promises";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";

const home = dirname(fileURLToPath(import.meta.url));
const output = resolve(process.argv[2] ?? join(home, "html"));
const shipped = ["swiper", "animejs"];

/** The licence texts of the packages that are part of the page. */
async function licences() {
  const texts = [];
  for (const name of shipped) {
    const folder = join(home, "node_modules", name);
    const { version } = JSON.parse(await readFile(join(folder, "package.json"), "utf8"));
    const text = await readFile(join(folder, "LICENSE"), "utf8").catch(() => readFile(join(folder, "LICENSE.md"), "utf8"));
    texts.push(`${name} ${version}\n\n${text.trim()}\n`);
  }
  return texts.join(`\n${"-".repeat(80)}\n\n`);
}

await rm(output, { recursive: true, force: true });
await mkdir(join(output, "js"), { recursive: true });
await build({
  absWorkingDir: home,
  entryPoints: { player: "src/main.js" },
  outdir: join(output, "js"),
  bundle: true,
  format: "iife",
  target: ["es2022", "safari16"],
  loader: { ".xml": "text" },
  minify: true,
  legalComments: "none",
  logLevel: "warning",
});
await build({
  absWorkingDir: home,
  entryPoints: { player: "src/player.css" },
  outdir: join(output, "js"),
  bundle: true,
  minify: true,
  logLevel: "warning",
});
await cp(join(home, "src/index.html"), join(output, "index.html"));
await writeFile(join(output, "js", "LICENSES.txt"), await licences());
