// The least of SWF: a movie with a ground of one colour, and actions on its first frame.

/** @param {number} code @param {Buffer} data */
function tag(code, data) {
  const head = Buffer.alloc(6);
  head.writeUInt16LE((code << 6) | 63, 0);
  head.writeUInt32LE(data.length, 2);
  return Buffer.concat([head, data]);
}

/** Opens an address, as a hostile movie would. @param {string} address @param {string} target */
export function openAddress(address, target) {
  const strings = Buffer.from(`${address}\0${target}\0`, "latin1");
  const head = Buffer.from([0x83, strings.length & 255, strings.length >> 8]);
  return Buffer.concat([head, strings]);
}

/** Jumps to itself for ever. */
export const kEndlessLoop = Buffer.from([0x99, 2, 0, 0xfb, 0xff]);

/** @param {number[]} color red, green, blue @param {Buffer[]} [actions] */
export function solidMovie(color, actions = []) {
  // Five bits say that four numbers of fifteen bits follow: 0, 6400, 0 and 4000 twips.
  const bits = [15, 0, 6400, 0, 4000].map((value, index) =>
    value.toString(2).padStart(index === 0 ? 5 : 15, "0"),
  );
  const size = Buffer.from(
    (bits.join("").padEnd(72, "0").match(/.{8}/g) ?? []).map((byte) => parseInt(byte, 2)),
  );
  const rate = Buffer.from([0, 12, 2, 0]);
  const action = tag(12, Buffer.concat([...actions, Buffer.from([0])]));
  const show = tag(1, Buffer.alloc(0));
  const attributes = tag(69, Buffer.alloc(4));
  const body = [
    attributes,
    tag(9, Buffer.from(color)),
    action,
    show,
    show,
    tag(0, Buffer.alloc(0)),
  ];
  const rest = Buffer.concat([size, rate, ...body]);
  const head = Buffer.from([0x46, 0x57, 0x53, 8, 0, 0, 0, 0]);
  head.writeUInt32LE(head.length + rest.length, 4);
  return Buffer.concat([head, rest]);
}
