// The parts of the Flash emulator, read once and only when a slide needs them.

import { readBytes } from "../reading.js";

const kFolder = "js/ruffle/";

/**
 * @param {ArrayBuffer} bytes gzip data, or plain data where the server has unpacked it already
 * @returns {Promise<ArrayBuffer>}
 */
function unpacked(bytes) {
  const [first, second] = new Uint8Array(bytes, 0, 2);
  if (first !== 0x1f || second !== 0x8b) return Promise.resolve(bytes);
  return new Response(
    new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip")),
  ).arrayBuffer();
}

async function readParts() {
  const text = new TextDecoder();
  const [core, main, packed] = await Promise.all(
    ["core.js", "ruffle.js", "core.bin"].map((name) => readBytes(kFolder + name)),
  );
  // The core registers itself, so that the main script finds it there and loads nothing.
  return { scripts: [text.decode(core), text.decode(main)], packed };
}

/** @type {ReturnType<typeof readParts> | null} */
let parts = null;

/** Reads the emulator ahead of its use. */
export async function prepareEmulator() {
  try {
    parts ??= readParts();
    return await parts;
  } catch (error) {
    parts = null;
    throw error;
  }
}

/**
 * @returns {Promise<{ scripts: string[], wasm: ArrayBuffer }>} the caller may give the program
 *   away
 */
export async function emulator() {
  const { scripts, packed } = await prepareEmulator();
  return { scripts, wasm: (await unpacked(packed)).slice(0) };
}
