// The boxes of random screens in Chromium, against their constraints solved to the letter.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { closeBrowser, iabSample, open, serve, tap, vendorList } from "./browser.mjs";
import { solved } from "./boxes.mjs";
import { randomConfiguration } from "./random.mjs";

after(closeBrowser);

// What is touched reaches beyond the box that is laid out, in points above and below.
const reach = { switch: [6.5, 6.5], link: [5, 1.5] };

// The boxes of all views, within the root, and how wide each would be in one line.
function measure(page) {
  return page.evaluate(() => {
    const boxOf = (element) => element.getBoundingClientRect();
    const elements = [...document.querySelectorAll(".surface [id], .surface[id]")]
      .filter(({ id }) => /^v\d+$/.test(id));
    const root = boxOf(elements[0]);
    return elements.map((element) => {
      const { left, top, width, height } = boxOf(element);
      Object.assign(element.style, { width: "max-content", minWidth: 0, maxWidth: "none" });
      const natural = boxOf(element).width;
      Object.assign(element.style, { width: "", minWidth: "", maxWidth: "" });
      const kind = element.matches(".switch") ? "switch"
        : element.matches(".leaves") ? "link" : "";
      return { left: left - root.left, top: top - root.top, width, height, natural, kind };
    });
  });
}

function laidOut(box) {
  const [above, below] = reach[box.kind] ?? [0, 0];
  return { ...box, top: box.top + above, height: box.height - above - below };
}

// Nothing gets wider than its column: a text that is held at its beginning alone wraps there, and a
// button's keeps the same gap at its end.
function fitsInto(boxes, views, i) {
  const right = (box) => box.left + box.width;
  const { type, parent } = views[i];
  if (parent === null) return true;
  const gap = type === "button" ? boxes[i].left - boxes[parent].left : 0;
  if (right(boxes[i]) + gap > right(boxes[parent])) return false;
  return type !== "label" || views.every((other, j) => other.parent !== parent ||
    other.type !== "switch" || right(boxes[i]) <= boxes[j].left);
}

async function compare(page, address) {
  const views = await (await fetch(`${address}/constraints`)).json();
  const boxes = (await measure(page)).map(laidOut);
  assert.equal(boxes.length, views.length);
  const sizes = boxes.map(({ natural, height }, i) =>
    views[i].type === "label" || views[i].type === "button" ? { width: natural, height }
      : views[i].type === "switch" ? { width: 51, height } : {});
  const wanted = solved(views, sizes, { width: boxes[0].width, height: boxes[0].height });
  const fits = (i) => fitsInto(wanted, views, i);
  const wrong = boxes.flatMap((box, i) =>
    (fits(i) ? ["left", "top", "width", "height"] : ["left", "top", "height"])
      .filter((side) => !(Math.abs(box[side] - wanted[i][side]) <= 0.5))
      .map((side) => `${views[i].type} ${i}: ${side} is ${box[side]}, solved ${wanted[i][side]}`));
  assert.deepEqual(wrong, []);
  return boxes.length;
}

test("random category centers lie as their constraints say", async (t) => {
  let compared = 0;
  for (let seed = 1; seed <= 6; ++seed) {
    const address = await serve(t, randomConfiguration(seed));
    for (const [width, textSize] of [[320, 1], [390, 2], [768, 1], [1280, 1]]) {
      const page = await open(t, address, { width, textSize });
      try {
        compared += await compare(page, address);
      } catch (error) {
        error.message = `seed ${seed}, ${width} points, text ${textSize}: ${error.message}`;
        throw error;
      }
      await page.context().close();
    }
  }
  assert.ok(compared > 500, `${compared} boxes`);
});

// What leads from screen to screen: purposes, vendors, one of them opened.
const ways = [{ name: "Details" }, { name: "Partners", exact: true }, { name: "Details AdQuarry" }];

test("the IAB center's screens lie as their constraints say", async (t) => {
  for (const width of [320, 390, 768]) {
    const address = await serve(t, iabSample, "en", vendorList);
    const page = await open(t, address, { width });
    await compare(page, address);
    for (const way of ways) {
      await tap(page, page.getByRole("button", way).first());
      await compare(page, address);
    }
    await page.context().close();
  }
});
