// The boxes of random screens in Chromium, against their constraints solved to the letter.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { closeBrowser, open, resize, serve } from "./browser.mjs";
import { expectSolvedBoxes } from "./boxes.mjs";
import { randomConfiguration } from "./random.mjs";

after(closeBrowser);

test("random category centers lie as their constraints say", async (t) => {
  let compared = 0;
  for (let seed = 1; seed <= 6; ++seed) {
    const address = await serve(t, randomConfiguration(seed));
    const page = await open(t, address);
    for (const [width, textSize] of [[320, 1], [390, 2], [768, 1], [1280, 1]]) {
      await resize(page, { width, textSize });
      try {
        compared += await expectSolvedBoxes(page, address);
      } catch (error) {
        error.message = `seed ${seed}, ${width} points, text ${textSize}: ${error.message}`;
        throw error;
      }
    }
    await page.context().close();
  }
  assert.ok(compared > 500, `${compared} boxes`);
});
