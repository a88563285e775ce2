import assert from "node:assert/strict";
import { readdir, stat } from "node:fs/promises";
import { join } from "node:path";
import { test } from "node:test";
import { builtPage } from "../support/workspace.js";

const kMost = 200_000;

test("the page's script is small, and the emulator is none of it", async () => {
  const { size } = await stat(join(builtPage(), "js/player.js"));
  assert.ok(size < kMost, `${size} bytes`);
  assert.deepEqual((await readdir(join(builtPage(), "js"))).sort(), [
    "LICENSES.txt",
    "player.css",
    "player.js",
    "ruffle",
  ]);
});
