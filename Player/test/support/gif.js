// The least of GIF: a picture of one pixel that is red and blue in turn, five times a second.

/** @param {number} index of its colour */
function frame(index) {
  const control = [0x21, 0xf9, 4, 0, 20, 0, 0, 0];
  const place = [0x2c, 0, 0, 0, 0, 1, 0, 1, 0, 0];
  // Codes of three bits: clear, the colour, end.
  const codes = 4 | (index << 3) | (5 << 6);
  return [...control, ...place, 2, 2, codes & 255, codes >> 8, 0];
}

export function blinkingPicture() {
  const screen = [1, 0, 1, 0, 0x80, 0, 0];
  const colors = [200, 30, 40, 30, 40, 200];
  const forever = [0x21, 0xff, 11, ...Buffer.from("NETSCAPE2.0"), 3, 1, 0, 0, 0];
  const bytes = [...screen, ...colors, ...forever, ...frame(0), ...frame(1), 0x3b];
  return Buffer.concat([Buffer.from("GIF89a"), Buffer.from(bytes)]);
}
