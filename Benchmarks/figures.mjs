// What the benchmarks' rows say: medians, ratios and whether a limit was kept, as text for a table.
//
// A row is a line of JSON that a benchmark program prints:
//   what, unit ("s", "%", "KiB" …), ours: samples, limit, judged ("ratio", "difference" or "ours"),
//   share (of the samples that stay within the limit; 0.5 judges the median),
//   and where there is one: reference, theirs: samples of the same rounds,
//   size and of ("1000", "captions") where the row shows how a cost grows, peakKiB.

/** The value below which a share of the samples lies. */
export function quantile(samples, share) {
  const sorted = [...samples].sort((one, other) => one - other);
  return sorted[Math.round(share * (sorted.length - 1))];
}

const kScales = {
  s: [[1, "s", 2], [1e-3, "ms", 2], [1e-6, "µs", 1]],
  ms: [[1, "ms", 2]],
  KiB: [[1024 * 1024, "GiB", 1], [1024, "MiB", 1], [1, "KiB", 0]],
};

/** A measure in the unit that suits it. */
export function measureText(value, unit) {
  const scales = kScales[unit] ?? [[1, unit, 2]];
  const [scale, name, digits] = scales.find(([least]) => Math.abs(value) >= least) ?? scales.at(-1);
  return `${(value / scale).toFixed(digits)} ${name}`;
}

const countText = (count) => count.toLocaleString("en-US");

/** What stands against the limit: `{ value, low, high }`, of which low and high are its quartiles. */
export function judgement({ ours, theirs, judged, share }) {
  if (judged === "difference")
    return { value: quantile(ours, share) - quantile(theirs, share) };
  const samples = judged === "ratio" ? ours.map((sample, round) => sample / theirs[round]) : ours;
  return { value: quantile(samples, share), low: quantile(samples, 0.25), high: quantile(samples, 0.75) };
}

export const isReached = (row) => judgement(row).value <= row.limit;

export const titleOf = ({ what, size, of }) => (size ? `${what}, ${countText(size)} ${of}` : what);

function spread(samples, share, unit) {
  const text = (part) => measureText(quantile(samples, part), unit);
  if (samples.length === 1) return text(0.5);
  const middle = share === 0.5 ? text(0.5) : `${text(share)} at ${100 * share} %`;
  return `${middle} (${text(0.25)} – ${text(0.75)})`;
}

function ratioText(row) {
  if (row.theirs === undefined) return "–";
  const { value, low, high } = judgement({ ...row, judged: row.judged === "difference" ? "difference" : "ratio" });
  return row.judged === "difference" ? `${measureText(value, row.unit)} more` : `${value.toFixed(2)} (${low.toFixed(2)} – ${high.toFixed(2)})`;
}

function limitText({ limit, judged, unit }) {
  if (judged === "ratio") return limit.toFixed(2);
  return judged === "difference" ? `${measureText(limit, unit)} more` : measureText(limit, unit);
}

export const kColumns = ["what", "ours", "reference", "ratio", "limit", "reached", "peak memory"];

/** The cells of a row, one for each of kColumns. */
export function cellsOf(row) {
  return [
    titleOf(row),
    spread(row.ours, row.share, row.unit),
    row.theirs ? `${spread(row.theirs, row.share, row.unit)}: ${row.reference}` : "–",
    ratioText(row),
    limitText(row),
    isReached(row) ? "yes" : "NO",
    row.peakKiB ? measureText(row.peakKiB, "KiB") : "–",
  ];
}

/** What grows with a size: of each, the rows by size. */
export function growthOf(rows) {
  const growth = new Map();
  for (const row of rows.filter(({ size }) => size))
    growth.set(row.what, [...(growth.get(row.what) ?? []), row]);
  return growth;
}

/** The machine in a line. */
export function machineText({ processor, cores, memory, system, kernel, fileSystem }) {
  return `${processor}, ${cores} cores, ${(memory / 2 ** 30).toFixed(1)} GiB of memory, ${system}, Linux ${kernel}, ${fileSystem}`;
}
