// What a Flash movie's header says about it.

const kLongest = 300;
const kMost = 64;

/**
 * @param {Uint8Array<ArrayBuffer>} packed zlib data
 * @returns {Promise<Uint8Array>} the beginning of what it holds
 */
async function unpackStart(packed) {
  const reader = new Blob([packed])
    .stream()
    .pipeThrough(new DecompressionStream("deflate"))
    .getReader();
  const { value } = await reader.read();
  reader.cancel().catch(() => {});
  return value ?? new Uint8Array();
}

/** @param {ArrayBuffer} movie @returns {string} "FWS", "CWS" or "ZWS"; anything else is no movie */
export function signature(movie) {
  return String.fromCharCode(...new Uint8Array(movie.slice(0, 3)));
}

/**
 * How long a movie plays until its first frame comes again.
 * @param {ArrayBuffer} movie
 * @returns {Promise<number>} seconds; 0 when the header does not say, as with a movie packed by
 *   LZMA
 */
export async function movieSeconds(movie) {
  const kind = signature(movie);
  if (kind !== "FWS" && kind !== "CWS") return 0;
  const rest = new Uint8Array(movie.slice(8));
  const start = kind === "FWS" ? rest : await unpackStart(rest).catch(() => new Uint8Array());
  if (start.length === 0) return 0;
  // A rectangle of four numbers, whose width in bits is told by its first five, stands before the
  // frame rate.
  const at = Math.ceil((5 + 4 * (start[0] >> 3)) / 8);
  const head = new DataView(start.slice(0, kMost).buffer);
  if (head.byteLength < at + 4) return 0;
  const rate = head.getUint16(at, true) / 256;
  const frames = head.getUint16(at + 2, true);
  return rate > 0 && frames > 1 ? Math.min(frames / rate, kLongest) : 0;
}
