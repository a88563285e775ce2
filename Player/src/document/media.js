// Where a slide's media file is, and what kind it is.

/**
 * The document holds plain names: every character that means something in an address is encoded,
 * so "50% off #1.jpg"
 * is found, and a name can never leave the page's folder or name another host.
 * @param {string} path relative to the page's folder
 * @returns {string} a relative address; "" when the path names nothing inside the folder
 */
export function mediaAddress(path) {
  const parts = path.split(/[\\/]+/).filter((part) => part !== "" && part !== ".");
  if (parts.includes("..")) return "";
  // A lone surrogate cannot be encoded, and no file has such a name.
  return parts.map((part) => encodeURIComponent(part.toWellFormed?.() ?? part)).join("/");
}

/** @param {string} path */
export function isMovie(path) {
  return /\.swf$/i.test(path);
}
