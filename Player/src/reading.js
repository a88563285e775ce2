// Reads the files beside the page.
//
// Browsers take a file of the disk for one that never changes, also after the page is loaded
// again; in a folder that is being edited it does. So a page from the disk asks under addresses
// of its own, which end in a stamp.

const kKey = "vireonix.stamp";

/** Whether the page was opened from a folder. */
export const kFromFolder = location.protocol === "file:";

const kStamp = kFromFolder ? `?${Date.now()}` : "";
const kEarlierStamp = exchangeStamp();

/**
 * @returns {string} the stamp of this page when it was loaded before; this one's when it never
 *   was
 */
function exchangeStamp() {
  try {
    const earlier = sessionStorage.getItem(kKey);
    sessionStorage.setItem(kKey, kStamp);
    return kFromFolder ? (earlier ?? kStamp) : "";
  } catch {
    return kStamp;
  }
}

/**
 * @param {string} address relative to the page
 * @returns {string} the address of the file as it is now
 */
export function freshAddress(address) {
  return address + kStamp;
}

/**
 * @param {string} address relative to the page
 * @returns {string} the address of the file as it was when the page was loaded before: the
 *   browser has it at hand
 */
export function earlierAddress(address) {
  return address + kEarlierStamp;
}

/**
 * Files that the user has handed over, by their paths below the page's folder.
 * @type {Map<string, File> | null}
 */
let handedOver = null;

/**
 * From now on, reads the files beside the page from a folder that the user has chosen.
 * @param {Iterable<File>} files all of the folder, with their paths
 */
export function takeFolder(files) {
  handedOver = new Map(
    [...files].map((file) => [file.webkitRelativePath.split("/").slice(1).join("/"), file]),
  );
}

/** @param {Map<string, File>} files @param {string} address @returns {Promise<ArrayBuffer>} */
async function readHandedOver(files, address) {
  const file = files.get(decodeURIComponent(address.replace(/\?.*$/, "")));
  if (!file) throw new Error(`${address}: not in the folder`);
  return file.arrayBuffer();
}

/** @param {XMLHttpRequest} request @param {number} length of what came */
function arrived({ status }, length) {
  return status === 200 || (status === 0 && length > 0);
}

/**
 * Unlike fetch, XMLHttpRequest also reads neighbour files of a page that was opened from a
 * folder, where that is allowed.
 * @param {string} address
 * @returns {Promise<ArrayBuffer>} rejected when the browser or the server does not hand the file
 *   out
 */
export function readBytes(address) {
  if (handedOver) return readHandedOver(handedOver, address);
  return new Promise((resolve, reject) => {
    const request = new XMLHttpRequest();
    request.responseType = "arraybuffer";
    request.onload = () => {
      if (arrived(request, request.response?.byteLength)) resolve(request.response);
      else reject(new Error(`${address}: status ${request.status}`));
    };
    request.onerror = () => reject(new Error(`${address}: refused`));
    request.open("GET", address);
    request.send();
  });
}

/**
 * @param {string} address
 * @returns {string | null} a small file's UTF-8 text, before anything is drawn
 */
function readTextNow(address) {
  const request = new XMLHttpRequest();
  request.overrideMimeType("text/plain; charset=utf-8");
  request.open("GET", address, false);
  try {
    request.send();
  } catch {
    return null;
  }
  return arrived(request, request.responseText.length) ? request.responseText : null;
}

/**
 * A page from the disk waits for its document, which is there at once: so the page before it
 * stays in view until this one
 * has something to show.
 * @param {string} address
 * @returns {string | null | Promise<string | null>} the UTF-8 text; null when the file is not
 *   handed out
 */
export function readDocument(address) {
  if (kFromFolder && !handedOver) return readTextNow(freshAddress(address));
  return readBytes(address).then(
    (bytes) => new TextDecoder().decode(bytes),
    () => null,
  );
}
