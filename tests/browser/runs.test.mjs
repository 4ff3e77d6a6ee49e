// Long lists, of which the browser lays out what is near the view: all is there nonetheless.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { mkdtemp, readFile, rm, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { closeBrowser, iabSample, open, sample, serve, vendorList } from "./browser.mjs";

after(closeBrowser);

const last = "The very last purpose";

function long(t) {
  const row = (ID, name, subcategories = []) => ({ ID: String(ID), name, subcategories,
    description: "What is done for this purpose, in sentences of very different length. ".repeat(1 + ID % 4) });
  return serve(t, {
    information: { version: 1, content: "You decide." },
    global_consent: { name: "All", description: "All of them" },
    categories: [...Array.from({ length: 50 }, (_, i) => row(10 * (i + 1), `Purpose ${i}`,
      Array.from({ length: i % 5 }, (_, j) => row(10 * (i + 1) + j + 1, `Partial ${i}.${j}`)))),
    row(9999, last)],
  });
}

const frames = (page, count = 2) => page.evaluate(async (count) => {
  while (count--) await new Promise(requestAnimationFrame);
}, count);

const place = (page) => page.locator(".scroll").evaluate((list) =>
  ({ top: list.scrollTop, end: list.scrollHeight - list.clientHeight, height: list.scrollHeight }));

test("rows out of sight are not laid out, and lie where they would without runs", async (t) => {
  const page = await open(t, await long(t));
  const { seen, all } = await page.evaluate(() => {
    const switches = [...document.querySelectorAll(".switch")];
    return { all: switches.length,
      seen: switches.filter((each) => each.checkVisibility({ contentVisibilityAuto: true })).length };
  });
  assert.ok(seen > 5 && seen < all / 3, `${seen} of ${all}`);
  const boxes = () => page.evaluate(() => [...document.querySelectorAll(".scroll [id]")].map((element) => {
    const { left, top, width, height } = element.getBoundingClientRect();
    return [left, top, width, height].map((number) => Math.round(2 * number) / 2);
  }));
  const show = (styles) => page.evaluate((styles) => {
    const sheet = new CSSStyleSheet();
    sheet.replaceSync(`.run { ${styles} }`);
    document.adoptedStyleSheets.push(sheet);
  }, styles);
  await show("content-visibility: visible");
  const inRuns = await boxes();
  await show("display: contents");
  assert.deepEqual(inRuns, await boxes());
});

test("the scroll bar keeps its length on the way to the end, and the end is the last row", async (t) => {
  const page = await open(t, await long(t));
  await frames(page);
  const heights = [];
  for (let at; !at || at.top < at.end - 1;) {
    await page.locator(".scroll").evaluate((list) => list.scrollBy(0, 600));
    await frames(page);
    at = await place(page);
    heights.push(at.height);
  }
  const [least, most] = [Math.min(...heights), Math.max(...heights)];
  assert.ok(most / least < 1.2, `${least} to ${most}`);
  assert.ok(await page.getByText(last).isVisible());
});

test("End leads to the very end, and Home back to the beginning", async (t) => {
  const page = await open(t, await long(t));
  await page.keyboard.press("End");
  await page.waitForFunction(() => {
    const list = document.querySelector(".scroll");
    return list.scrollTop > 0 && list.scrollTop >= list.scrollHeight - list.clientHeight - 1;
  });
  await frames(page, 10);
  const { top, end } = await place(page);
  assert.ok(top >= end - 1, `${top} of ${end}`);
  const box = await page.getByText(last).boundingBox();
  assert.ok(box.y > 0 && box.y < 844, "the last row is seen");
  await page.keyboard.press("Home");
  await page.waitForFunction(() => document.querySelector(".scroll").scrollTop === 0);
});

test("text out of sight is found, and can be shown", async (t) => {
  const page = await open(t, await long(t));
  assert.ok(await page.evaluate((text) => window.find(text), last));
  await page.evaluate(() => getSelection().focusNode.parentElement.scrollIntoView());
  await frames(page, 10);
  const box = await page.getByText(last).boundingBox();
  assert.ok(box.y > 0 && box.y < 844, JSON.stringify(box));
});

test("what is scrolled to stays where it is when rows above it get their height", async (t) => {
  const page = await open(t, await long(t));
  const middle = page.getByText("Partial 24.0", { exact: true });
  await middle.evaluate((element) => element.scrollIntoView({ block: "center" }));
  await frames(page, 10);
  const before = await middle.boundingBox();
  assert.ok(before.y > 0 && before.y < 844, JSON.stringify(before));
  await page.locator(".scroll").evaluate((list) => list.scrollBy(0, -200));
  await frames(page, 10);
  const after = await middle.boundingBox();
  assert.ok(Math.abs(after.y - before.y - 200) < 2, `${before.y} to ${after.y}`);
});

test("rings and shadows at the edge of a run are not cut", async (t) => {
  const page = await open(t, await long(t));
  const room = await page.evaluate(() => [...document.querySelectorAll(".run")]
    .map((run) => parseFloat(getComputedStyle(run).overflowClipMargin)));
  assert.ok(room.length > 5 && room.every((points) => points >= 16));
});

test("short screens are laid out whole, as is the popup however long", async (t) => {
  const short = await open(t, await serve(t, sample));
  assert.equal(await short.locator(".run").count(), 0);
  const directory = await mkdtemp(join(tmpdir(), "popup-"));
  t.after(() => rm(directory, { recursive: true }));
  const list = JSON.parse(await readFile(vendorList, "utf8"));
  for (let id = 1; id <= 100; ++id)
    list.features[id] = { id, name: `Feature ${id}`, description: "", descriptionLegal: "" };
  await writeFile(join(directory, "list.json"), JSON.stringify(list));
  const popup = await open(t, await serve(t, iabSample, "en", join(directory, "list.json")));
  await popup.getByText("- Feature 100").waitFor();
  const skipping = await popup.evaluate(() => [...document.querySelectorAll(".scroll, .scroll *")]
    .filter((element) => getComputedStyle(element).contentVisibility !== "visible").length);
  assert.equal(skipping, 0);
});
