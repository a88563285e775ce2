// Builds the page into a folder: node build.mjs [folder].

import { build } from "esbuild";
import { cp, mkdir, readdir, readFile, rm, writeFile } from "node:fs/promises";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";

const home = dirname(fileURLToPath(import.meta.url));
const output = resolve(process.argv[2] ?? join(home, "html"));
const ruffle = join(home, "node_modules", "@ruffle-rs", "ruffle");
const shipped = ["animejs", "@ruffle-rs/ruffle"];
const target = ["es2022", "safari16"];

/**
 * Makes "bundled:./x.js" the text of that script with all its imports, to be run somewhere else.
 */
const bundledScripts = {
  name: "bundled-scripts",
  setup(/** @type {import("esbuild").PluginBuild} */ { onResolve, onLoad }) {
    onResolve({ filter: /^bundled:/ }, ({ path, resolveDir }) => {
      return { path: join(resolveDir, path.slice("bundled:".length)), namespace: "bundled" };
    });
    onLoad({ filter: /.*/, namespace: "bundled" }, async ({ path }) => {
      const options = {
        bundle: true,
        minify: true,
        write: false,
        format: /** @type {const} */ ("iife"),
        target,
      };
      const { outputFiles } = await build({ entryPoints: [path], ...options });
      return { contents: (outputFiles ?? [])[0].text, loader: "text", watchFiles: [path] };
    });
  },
};

/** Puts the emulator into a folder: its main script, its core and, packed, the core's program. */
async function copyEmulator(/** @type {string} */ folder) {
  const names = await readdir(ruffle);
  const cores = names.filter((name) => /^core\.ruffle\..*\.js$/.test(name));
  const texts = await Promise.all(cores.map((name) => readFile(join(ruffle, name), "utf8")));
  // Of its two builds the one for today's browsers; the other one's program says "mvp".
  const core = texts.filter((text) => !text.includes("wasm_mvp"));
  if (core.length !== 1) throw new Error("the emulator's package is not laid out as expected");
  const main = await readFile(join(ruffle, "ruffle.js"), "utf8");
  const program = /new URL\(\w+\((\d+)\)/.exec(core[0])?.[1];
  const file = new RegExp(`\\b${program}\\([^)]*\\)\\{[^}]*"([0-9a-f]+\\.wasm)"`).exec(main)?.[1];
  if (!file) throw new Error("the emulator's program is not named as expected");
  await mkdir(folder, { recursive: true });
  const withoutMap = (/** @type {string} */ text) =>
    text.replace(/\n?\/\/# sourceMappingURL=.*\s*$/, "\n");
  await writeFile(join(folder, "core.js"), withoutMap(core[0]));
  await writeFile(join(folder, "ruffle.js"), withoutMap(main));
  await writeFile(
    join(folder, "core.bin"),
    gzipSync(await readFile(join(ruffle, file)), { level: 9 }),
  );
}

/** The licence texts of the packages that are part of the page. */
async function licences() {
  const texts = [];
  for (const name of shipped) {
    const folder = join(home, "node_modules", name);
    const { version } = JSON.parse(await readFile(join(folder, "package.json"), "utf8"));
    const names = (await readdir(folder)).filter((file) => /^LICENSE/.test(file));
    if (names.length === 0) throw new Error(`${name} comes without a licence`);
    for (const file of names)
      texts.push(`${name} ${version}\n\n${(await readFile(join(folder, file), "utf8")).trim()}\n`);
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
  target,
  plugins: [bundledScripts],
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
await copyEmulator(join(output, "js", "ruffle"));
await cp(join(home, "src/index.html"), join(output, "index.html"));
await writeFile(join(output, "js", "LICENSES.txt"), await licences());
