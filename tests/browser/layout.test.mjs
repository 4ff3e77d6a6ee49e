import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, french, open, resize, sample, serve } from "./browser.mjs";
import { expectWhole, seen } from "./whole.mjs";

after(closeBrowser);

// The rows with a switch, and the screen that they are in.
function measureRows() {
  const rows = [...document.querySelectorAll(".switch")].map((control) => {
    const title = document.getElementById(control.getAttribute("aria-labelledby"));
    const row = control.parentElement.getBoundingClientRect();
    return { scale: getComputedStyle(control).getPropertyValue("--scale").trim(),
      title: title.getBoundingClientRect().toJSON(), row: row.toJSON(),
      control: control.getBoundingClientRect().toJSON() };
  });
  return { rows, screen: document.querySelector(".screen").getBoundingClientRect().toJSON() };
}

const near = (actual, expected, what) =>
  assert.ok(Math.abs(actual - expected) <= 0.6, `${what}: ${actual} instead of ${expected}`);

for (const [name, file, language] of [["sample", sample, "en"], ["french", french, "fr"]])
  test(`${name}: whole, apart and in its shares at every width and text size`, async (t) => {
    const page = await open(t, await serve(t, file, language));
    for (const width of [320, 390, 768])
      for (const textSize of [1, 2]) {
        const where = `${width} at ${textSize * 100} %`;
        await resize(page, { width, textSize });
        const { boxes } = await expectWhole(page, where);
        const { rows, screen } = await page.evaluate(measureRows);
        assert.ok(boxes.length > 10, where);
        for (const { scale, title, row, control } of rows) {
          near(row.left, screen.left + 8, `${where}: row`);
          near(row.right, screen.right - 8, `${where}: row`);
          near(control.right, row.right, `${where}: switch`);
          near(title.left, row.left + (scale === "0.6" ? 10 : 0), `${where}: title`);
          if (scale !== "0.75") continue; // a category's title and switch are shares of the screen
          near(title.width, 0.8 * screen.width, `${where}: title's share`);
          near(control.width, 0.15 * screen.width, `${where}: switch's share`);
        }
        assert.deepEqual(page.failures, []);
      }
  });

test("a row is as high as what it is held to, and grows only where its title wraps", async (t) => {
  const long = "A title that is far too long for one line of any phone that was ever made";
  const texts = (ID, name) => ({ ID: String(ID), name, description: "Why." });
  const address = await serve(t, {
    information: { version: 1, content: "You decide." },
    global_consent: { name: "All", description: "All of them." },
    categories: [{ ...texts(1, "Short"), subcategories: [texts(2, "Short"), texts(3, long)] },
      texts(4, long), texts(5, "")] });
  for (const textSize of [0.75, 1, 2]) {
    const page = await open(t, address, { textSize });
    assert.deepEqual((await seen(page)).overlapping, [], `${textSize}`);
    const { rows } = await page.evaluate(measureRows);
    const high = rows.map(({ row, title, scale }, i) => {
      const next = rows[i + 1]?.row.top ?? Infinity;
      assert.ok(title.bottom + 2 < next, "a title is nearer to its own text");
      return [scale, row.height, title.height];
    });
    const [, nameless] = high.pop(); // its switch may hang into the gap, but not over the text
    near(nameless, 31 * 0.875 - 8, "without a title");
    for (const [scale, row, title] of high) {
      if (scale === "0.75") near(row, Math.max(title, 31 * 0.875 - 8), "as high as its title");
      else near(row, Math.max(31, title + 5), "as high as its switch, unless the title wraps");
    }
    assert.ok(high.filter(([, , title]) => title > 30 * textSize).length === 2, "two wrap");
  }
});

test("a long policy link keeps its margin at either side", async (t) => {
  const page = await open(t, await serve(t, { information: { version: 1, content: "You decide.",
    privacy_policy_url: "https://example.com/", privacy_policy_text: "Everything we write ".repeat(9) } }));
  const { left, right } = await page.locator(".leaves").evaluate((link) => link.getBoundingClientRect());
  near(left, 10, "left");
  assert.ok(right <= 380.5 && right > 340, `right: ${right}`);
});

test("the text size takes effect, gaps are the constraints', and the title bar takes what is kept free", async (t) => {
  const address = await serve(t, sample);
  const sizes = [];
  for (const textSize of [1, 2]) {
    const page = await open(t, address, { textSize });
    sizes.push(await page.locator("h2").first().evaluate(
      (element) => parseFloat(getComputedStyle(element).fontSize)));
  }
  assert.deepEqual(sizes, [17, 34]);
  const page = await open(t, address);
  const [bar, scroll, first, row, description] = await page.evaluate(() => {
    const box = (element) => element.getBoundingClientRect().toJSON();
    const one = document.querySelector(".switch");
    return [document.querySelector(".titlebar"), document.querySelector(".scroll"), document.querySelector(".label"), one.parentElement,
      document.getElementById(one.getAttribute("aria-describedby").split(" ").pop())].map(box);
  });
  near(scroll.top, bar.bottom, "scroll view");
  near(scroll.bottom, 834, "scroll view");
  near(first.top, scroll.top + 8, "first text");
  near(description.top - row.bottom, 8, "standard gap");
});

test("in a wide window the screen is a column in its middle, with shares of the column", async (t) => {
  const page = await open(t, await serve(t, sample), { width: 1280 });
  await expectWhole(page, "wide");
  const { rows } = await page.evaluate(measureRows);
  for (const { scale, title, row } of rows) {
    near(row.left, (1280 - 768) / 2 + 8, "row");
    near(row.right, (1280 + 768) / 2 - 8, "row");
    if (scale === "0.75") near(title.width, 0.8 * 768, "title's share");
  }
});

test("on a folded phone, titles leave the room that their switches need", async (t) => {
  for (const textSize of [1, 2]) {
    const page = await open(t, await serve(t, sample), { width: 250, textSize });
    const { cut, wide, overlapping } = await seen(page);
    assert.deepEqual([...cut, ...wide, ...overlapping], []);
  }
});

test("on paper the screen is whole", async (t) => {
  const page = await open(t, await serve(t, sample));
  assert.equal((await seen(page)).whole, false);
  await page.emulateMedia({ media: "print" });
  const { cut, wide, whole } = await seen(page);
  assert.deepEqual([...cut, ...wide, whole], [true]);
});

test("from right to left, title and switch change sides", async (t) => {
  const page = await open(t, await serve(t, sample, "ar"));
  await expectWhole(page, "ar");
  const { rows } = await page.evaluate(measureRows);
  for (const { title, control } of rows) assert.ok(control.right < title.left + 1);
});

test("a text runs as its own letters do, and begins where the page does", async (t) => {
  const texts = { content: "All (of it).", privacy_policy_url: "https://example.com/",
    privacy_policy_text: "Read (more)." };
  for (const language of ["ar", "en"]) {
    const page = await open(t, await serve(t, { information: { version: 1, ...texts } }, language));
    const ends = await page.evaluate(() => [...document.querySelectorAll(".label, .button")].map(
      ({ firstChild: text }) => [0, text.length - 1].map((at) => {
        const range = document.createRange();
        range.setStart(text, at);
        range.setEnd(text, at + 1);
        return range.getBoundingClientRect().left;
      })));
    assert.equal(ends.length, 2);
    for (const [first, last] of ends) assert.ok(first < last, `${language}: ${first}, ${last}`);
    assert.equal(ends[0][0] < 20, language === "en", `${language}: ${ends[0][0]}`);
  }
});
