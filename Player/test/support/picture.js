// The least of PNG: writing a picture of one colour, and reading the first pixel of a screenshot.

import { crc32 } from "./crc32.js";
import { deflateSync, inflateSync } from "node:zlib";

/** @param {string} type @param {Buffer} data */
function chunk(type, data) {
  const body = Buffer.concat([Buffer.from(type, "latin1"), data]);
  const frame = Buffer.alloc(8);
  frame.writeUInt32BE(data.length, 0);
  frame.writeUInt32BE(crc32(body), 4);
  return Buffer.concat([frame.subarray(0, 4), body, frame.subarray(4)]);
}

/** @param {number} red @param {number} green @param {number} blue */
export function solidPicture(red, green, blue, width = 64, height = 40) {
  const header = Buffer.alloc(13);
  header.writeUInt32BE(width, 0);
  header.writeUInt32BE(height, 4);
  header.set([8, 2, 0, 0, 0], 8);
  const row = Buffer.from([0, ...Array(width).fill([red, green, blue]).flat()]);
  const pixels = deflateSync(Buffer.concat(Array(height).fill(row)));
  const signature = Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
  const end = chunk("IEND", Buffer.alloc(0));
  return Buffer.concat([signature, chunk("IHDR", header), chunk("IDAT", pixels), end]);
}

/** @param {Buffer} png @returns {number[]} red, green and blue of its first pixel */
export function firstPixel(png) {
  const data = [];
  for (let at = 8; at < png.length; at += 12 + png.readUInt32BE(at)) {
    const length = png.readUInt32BE(at);
    if (png.toString("latin1", at + 4, at + 8) === "IDAT")
      data.push(png.subarray(at + 8, at + 8 + length));
  }
  return [...inflateSync(Buffer.concat(data)).subarray(1, 4)];
}
