import assert from "node:assert/strict";
import { test } from "node:test";
import { hostileText, randomNumbers } from "../support/random.js";
import { Session } from "../support/session.js";

const kAnchors = ["TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"];

test("each anchor puts the caption at its place", async (context) => {
  const session = await Session.start(context);
  await session.show([
    { captions: kAnchors.map((Align) => ({ text: Align, attributes: { Align } })) },
  ]);
  await session.seek(3000);
  const boxes = await session.page.$$eval(".shown", (elements) => {
    return elements.map((element) => ({
      code: element.textContent ?? "",
      box: element.getBoundingClientRect().toJSON(),
    }));
  });
  assert.equal(boxes.length, 9);
  for (const { code, box } of boxes) {
    const [row, column] = code === "C" ? ["C", "C"] : [code[0], code[1] ?? "C"];
    const across = { L: box.left - 48, C: (box.left + box.right) / 2 - 480, R: box.right - 912 }[
      column
    ];
    const down = { T: box.top - 30, C: (box.top + box.bottom) / 2 - 300, B: box.bottom - 570 }[row];
    assert.ok(
      Math.abs(across ?? 99) < 2 && Math.abs(down ?? 99) < 2,
      `${code} ${JSON.stringify(box)}`,
    );
  }
});

test("size grows with the slide, and colour and bold are the caption's", async (context) => {
  const session = await Session.start(context);
  await session.show([{ captions: [{ text: "Big", size: "30", color: "#12AB34" }] }]);
  const looks = () =>
    session.page.$eval(".run", (element) => {
      const { fontSize, color, fontWeight } = getComputedStyle(element);
      return [fontSize, color, fontWeight];
    });
  assert.deepEqual(await looks(), ["60px", "rgb(18, 171, 52)", "700"]);
  await session.page.setViewportSize({ width: 480, height: 300 });
  await session.page.waitForFunction(() => {
    const run = /** @type {Element} */ (document.querySelector(".run"));
    return getComputedStyle(run).fontSize === "30px";
  });
});

test("the text alignment sets the lines inside the caption", async (context) => {
  const session = await Session.start(context);
  const texts = ["0", "1", "2"].map((Text_Align) => ({
    text: "a long line<br>short",
    attributes: { Text_Align, In_Time: "0" },
  }));
  await session.show([{ captions: texts }]);
  const shifts = await session.page.$$eval(".part", (parts) =>
    parts.map((part) => {
      const range = document.createRange();
      const last = /** @type {Element} */ (part.lastElementChild);
      range.selectNodeContents(last);
      const box = part.getBoundingClientRect();
      const line = range.getBoundingClientRect();
      return Math.round((100 * (line.left - box.left)) / (box.width - line.width || 1));
    }),
  );
  assert.deepEqual(shifts, [0, 50, 100]);
});

test("captions seen together at one place do not cover each other", async (context) => {
  const session = await Session.start(context);
  await session.show([{ captions: [{ text: "one" }, { text: "two" }] }]);
  await session.seek(3000);
  const [first, second] = await session.page.$$eval(".shown", (all) =>
    all.map((one) => one.getBoundingClientRect().toJSON()),
  );
  assert.ok(first.bottom <= second.top, JSON.stringify([first, second]));
});

test("a caption is seen from its in time until it has left", async (context) => {
  const session = await Session.start(context);
  await session.show([{ captions: [{ attributes: { In_Time: "2", Stay_Time: "3" } }] }]);
  const states = [];
  for (const time of [0, 1900, 2100, 4000, 5900, 6400]) {
    await session.seek(time);
    states.push(
      await session.page.$eval(".caption", (element) => {
        const shown = getComputedStyle(/** @type {Element} */ (element.querySelector(".shown")));
        return `${element.getAttribute("data-state")} ${shown.visibility}`;
      }),
    );
  }
  const expected = [
    "waiting hidden",
    "waiting hidden",
    "entering visible",
    "staying visible",
    "leaving visible",
    "gone hidden",
  ];
  assert.deepEqual(states, expected);
});

test("letter by letter and word by word, the parts arrive one after another", async (context) => {
  const session = await Session.start(context);
  const opacities = () =>
    session.page.$$eval(".part", (parts) =>
      parts.map((part) => Number(getComputedStyle(part).opacity)),
    );
  for (const [unit, count] of [
    ["0", 1],
    ["1", 8],
    ["2", 3],
  ]) {
    await session.show([
      {
        captions: [
          { text: "One & two", attributes: { Text_Animation_LetterByLetter: String(unit) } },
        ],
      },
    ]);
    await session.seek(400);
    const parts = await opacities();
    assert.equal(parts.length, unit === "1" ? 7 : count);
    assert.ok(
      parts.every((opacity, index) => index === 0 || opacity < parts[index - 1]),
      parts.join(" "),
    );
    await session.seek(3000);
    assert.ok((await opacities()).every((opacity) => opacity === 1));
  }
});

test("hostile captions are shown as text and do nothing", async (context) => {
  const session = await Session.start(context);
  const hostile = [
    `<img src="x.png" onerror="window.hacked=1">`,
    `<script>window.hacked=2</script>`,
    `<font color="red" onclick="window.hacked=3">f</font>`,
    `<svg onload=window.hacked=4>`,
    `<b style="background:url(x.png)">styled</b>`,
    `]]><script>window.hacked=5</script>`,
    `<a href="javascript:window.hacked=6">link</a>`,
  ];
  await session.show([{ captions: hostile.map((text) => ({ text, size: "8" })) }]);
  await session.seek(3000);
  const shown = await session.page.$$eval(".shown", (all) => all.map((one) => one.textContent));
  // A known tag takes effect, whatever is attached to it does not.
  const expected = hostile.map((text) => text.replace(/^<(font|b) .*?>(.*)<\/.*>$/, "$2"));
  assert.deepEqual(shown, expected);
  assert.equal(
    await session.page.$$eval(".captions [onclick], .captions [onerror]", (all) => all.length),
    0,
  );
  assert.equal(await session.page.evaluate(() => /** @type {any} */ (window).hacked), undefined);
  assert.equal(await session.page.$$eval(".captions :not(div, p, span)", (all) => all.length), 0);
});

test("hostile captions by the hundred are shown as text and ask for nothing", async (context) => {
  const session = await Session.start(context);
  const captions = Array.from({ length: 300 }, (_, seed) => ({
    text: hostileText(randomNumbers(seed + 1), 10),
    size: "8",
    attributes: { Text_Animation_LetterByLetter: String(seed % 3) },
  }));
  await session.show([{ captions }]);
  await session.seek(3000);
  const strange = await session.page.$$eval(".captions :not(div, p, span)", (all) => all.length);
  assert.equal(strange, 0);
  const attributes = await session.page.$$eval(".captions *", (all) => [
    ...new Set(all.flatMap((one) => one.getAttributeNames())),
  ]);
  const known = ["aria-hidden", "class", "data-anchor", "data-state", "dir", "style"];
  assert.deepEqual(attributes.sort(), known);
  assert.equal(await session.page.evaluate(() => /** @type {any} */ (window).hacked), undefined);
});

test("a screen reader finds each caption of the slide on show once, whole", async (context) => {
  const session = await Session.start(context);
  const attributes = { Text_Animation_LetterByLetter: "1" };
  await session.show([
    { captions: [{ text: "Good morning", attributes }] },
    { captions: [{ text: "Good night", attributes }] },
  ]);
  const devtools = await session.page.context().newCDPSession(session.page);
  const { nodes } = await devtools.send("Accessibility.getFullAXTree");
  const told = nodes
    .filter(({ ignored }) => !ignored)
    .map(({ role, name }) => `${role?.value} ${name?.value}`);
  assert.equal(told.filter((entry) => entry === "StaticText Good morning").length, 1);
  assert.deepEqual(
    told.filter((entry) => /night|StaticText .$/.test(entry)),
    [],
  );
  for (const label of ["Previous slide", "Pause", "Next slide"])
    assert.ok(told.includes(`button ${label}`), label);
});

test("joined letters stay together, and their lines run from the right", async (context) => {
  const session = await Session.start(context);
  await session.show([
    { captions: [{ text: "مرحبا بكم", attributes: { Text_Animation_LetterByLetter: "1" } }] },
  ]);
  assert.equal(await session.page.$$eval(".part", (parts) => parts.length), 2);
  assert.equal(
    await session.page.$eval(".shown", (shown) => getComputedStyle(shown).direction),
    "rtl",
  );
  const [first, second] = await session.page.$$eval(".part", (all) =>
    all.map((one) => one.getBoundingClientRect().left),
  );
  assert.ok(first > second);
});
