// Serves a folder to the browser, from this machine to this machine only.

import { readFile } from "node:fs/promises";
import { createServer } from "node:http";
import { extname, join } from "node:path";

/** @type {Record<string, string>} */
const kTypes = {
  ".html": "text/html",
  ".js": "text/javascript",
  ".css": "text/css",
  ".png": "image/png",
};

/** @param {string} folder @returns {Promise<{ origin: string, close: () => void }>} */
export async function serve(folder) {
  const server = createServer(async (request, response) => {
    const path = decodeURIComponent(new URL(request.url ?? "/", "http://x").pathname);
    const content = await readFile(join(folder, path)).catch(() => null);
    const type = kTypes[extname(path)] ?? "application/octet-stream";
    response.writeHead(content ? 200 : 404, { "content-type": type, "cache-control": "no-store" });
    response.end(content ?? "");
  });
  await new Promise((/** @type {(value?: unknown) => void} */ done) =>
    server.listen(0, "127.0.0.1", done),
  );
  const address = /** @type {import("node:net").AddressInfo} */ (server.address());
  const close = () => {
    server.close();
    server.closeAllConnections();
  };
  return { origin: `http://127.0.0.1:${address.port}`, close };
}
