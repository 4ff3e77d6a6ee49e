// The IAB center's five screens at every width and text size, in languages with long words, other
// letters and no spaces: read whole, and where their constraints put them.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { expectSolvedBoxes } from "./boxes.mjs";
import { closeBrowser, iabScreens, open, resize, serve } from "./browser.mjs";
import { listsIn, sampleIn } from "./languages.mjs";
import { expectWhole } from "./whole.mjs";

after(closeBrowser);

const widths = [320, 390, 768, 1280];

for (const language of ["en", "de", "el", "zh", "ar"])
  test(`five screens: ${language}`, async (t) => {
    const address = await serve(t, sampleIn(language), language, ...listsIn(language));
    const page = await open(t, address);
    assert.equal(await page.getByText(sampleIn(language).texts.popup.title).count(), 1);
    for await (const screen of iabScreens(page))
      for (const textSize of [1, 2])
        for (const width of widths) {
          const where = `${screen} at ${width}, ${textSize * 100} %`;
          await resize(page, { width, textSize });
          const { listShare } = await expectWhole(page, where);
          assert.ok(listShare >= (width < 390 ? 0.25 : 1 / 3), `${where}: the list has ${listShare}`);
          if ((language === "en") !== (textSize === 1)) continue; // solving takes its time
          await expectSolvedBoxes(page, address).catch((error) => {
            error.message = `${where}: ${error.message}`;
            throw error;
          });
        }
    assert.deepEqual(page.failures, []);
  });

test("large letters leave room for the list in a low window, and go without a trace", async (t) => {
  const page = await open(t, await serve(t, sampleIn("de"), "de", ...listsIn("de")), { width: 320 });
  for await (const screen of iabScreens(page)) {
    const stacked = () => page.locator(".stacked").count();
    await resize(page, { width: 320 });
    const before = await stacked();
    if (screen === "vendors") await page.locator("#search").fill("a");
    for (const [width, height] of [[320, 568], [844, 390]]) {
      await resize(page, { width, height, textSize: 2 });
      const { listShare } = await expectWhole(page, `${screen} in ${width} by ${height}`);
      assert.ok(listShare >= 0.2, `${screen} in ${width} by ${height}: the list has ${listShare}`);
    }
    await resize(page, { width: 320, textSize: 2 });
    assert.equal(await page.locator(".bar.stacked").count(), await page.locator(".bar").count());
    await resize(page, { width: 320 });
    assert.equal(await stacked(), before, screen);
  }
});

test("from right to left, justified texts begin at the right too, and English hints end with their full stop", async (t) => {
  const page = await open(t, await serve(t, sampleIn("ar"), "ar", ...listsIn("ar")));
  for await (const screen of iabScreens(page)) {
    const amiss = await page.evaluate(() => {
      const range = document.createRange();
      const beginsAtTheLeft = (text) => {
        range.selectNodeContents(text);
        const lines = [...range.getClientRects()];
        const bottom = Math.max(...lines.map((line) => line.bottom));
        const begin = Math.max(...lines.map((line) => line.bottom === bottom ? line.right : 0));
        return begin < text.getBoundingClientRect().right - 12 - parseFloat(getComputedStyle(text).paddingRight);
      };
      const placeOf = (text, index) => {
        range.setStart(text.firstChild, index);
        range.setEnd(text.firstChild, index + 1);
        return range.getBoundingClientRect().left;
      };
      const endsAtTheLeft = (text) =>
        text.checkVisibility() && placeOf(text, text.textContent.length - 1) <= placeOf(text, 0);
      const justified = [...document.querySelectorAll(".label")]
        .filter((each) => getComputedStyle(each).textAlign === "justify" && each.textContent);
      return [...justified.filter(beginsAtTheLeft), ...[...document.querySelectorAll("p.hint, .hint p")].filter(endsAtTheLeft)]
        .map(({ textContent }) => textContent);
    });
    assert.deepEqual(amiss, [], screen);
  }
});
