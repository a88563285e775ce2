// Numbers and texts by chance, the same ones from the same seed.

/** Pieces of which hostile texts are put together. */
const kPieces = [
  ...["<", ">", "</", "/>", "&", ";", '"', "'", "=", " ", "\n", "]]>", "<![CDATA[", "<!--", "-->"],
  ...["<b>", "</b>", "<i>", "</i>", "<u>", "</u>", "<br>", "</font>", "<?", "?>", "<!DOCTYPE x ["],
  ...['<font size="999999" color="#ABCDEF">', "<font size='-3' color='url(x.png)'>", "<font>"],
  ...['<font color="#12345" onclick="window.hacked=1">', "<script>window.hacked=1</script>"],
  ...['<img src="x.png" onerror="window.hacked=1">', '<a href="javascript:window.hacked=1">'],
  ...["<style>*{display:none}</style>", "<iframe src='//x.invalid'>", "<svg onload=hacked()>"],
  ...["&amp;", "&lt;", "&#0;", "&#x110000;", "&#xd800;", "&nbsp;", "&x;", "(null)", "%@", "\\"],
  ...["\u0000", "\u202e", "\u2066", "\ud83d", "\udc68", "\ufeff", "\u200d", "👩‍👩‍👧", "e\u0301"],
  ...["مرحبا", "שלום", "नमस्ते", "静かな朝", "พระ", "Straße", "word", "a", "0", "<text>", "</text>"],
  ...["<slide>", "</slide>", "<data>", "</data>", "</main>", 'In_Time="', 'Align="C"'],
];

/** @param {number} seed @returns {() => number} from 0 to below 1 */
export function randomNumbers(seed) {
  let state = seed;
  return () => {
    state = (state + 0x6d2b79f5) | 0;
    let mixed = Math.imul(state ^ (state >>> 15), 1 | state);
    mixed = (mixed + Math.imul(mixed ^ (mixed >>> 7), 61 | mixed)) ^ mixed;
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 4294967296;
  };
}

/** @param {() => number} random @param {number} most pieces */
export function hostileText(random, most) {
  const count = Math.floor(random() * most) + 1;
  return Array.from({ length: count }, () => kPieces[Math.floor(random() * kPieces.length)]).join(
    "",
  );
}
