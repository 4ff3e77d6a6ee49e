// From screen to screen on one page: the IAB privacy center's.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, iabSample, open, serve, tap, vendorList } from "./browser.mjs";

after(closeBrowser);

async function openPurposes(t) {
  const page = await open(t, await serve(t, iabSample, "en", vendorList));
  await tap(page, page.getByRole("button", { name: "Details" }));
  await expectScreen(page, "Purposes");
  return page;
}

// The screen with this heading is there, and the page says so in every way.
async function expectScreen(page, heading) {
  await page.waitForFunction((text) =>
    document.querySelector(".screen :is(h1, h2, h3)").textContent === text, heading);
  assert.equal(await page.title(), `${heading} – Privacy settings`);
  assert.equal(await page.getByRole("status").textContent(), `New screen: ${heading}`);
}

const isFocused = (locator) => locator.evaluate((element) => element === document.activeElement);
const legalText = (page) => page.getByRole("button", { name: "Legal text" }).nth(2);

const waysBack = {
  "the screen's button": (page) => page.getByRole("button", { name: "Back" }).click(),
  "Escape": (page) => page.keyboard.press("Escape"),
  "the browser's Back": (page) => page.goBack(),
};

test("a new screen opens at its top, with the focus on its heading", async (t) => {
  const page = await openPurposes(t);
  assert.equal(await isFocused(page.locator(".screen").getByRole("heading").first()), true);
  await legalText(page).scrollIntoViewIfNeeded();
  await tap(page, page.getByRole("button", { name: "Partners", exact: true }));
  await expectScreen(page, "Partners");
  assert.equal(await page.locator(".scroll").evaluate((element) => element.scrollTop), 0);
  await page.keyboard.press("End"); // the keys go to the list
  await page.waitForFunction(() => document.querySelector(".scroll").scrollTop > 0);
  assert.deepEqual(page.failures, []);
});

test("every way back leads to where the screen was left, as often as one likes", async (t) => {
  const page = await openPurposes(t);
  const address = page.url();
  for (const [name, goBack] of [...Object.entries(waysBack), ...Object.entries(waysBack)]) {
    await tap(page, legalText(page));
    await expectScreen(page, "Legal text");
    await page.waitForFunction(() => history.state?.screen);
    await goBack(page);
    await expectScreen(page, "Purposes");
    await page.waitForFunction(() => !history.state?.screen);
    assert.equal(await isFocused(legalText(page)), true, name);
    assert.equal(await legalText(page).evaluate((element) => {
      const { top, bottom } = element.getBoundingClientRect();
      return top >= 0 && bottom <= innerHeight;
    }), true, name);
  }
  assert.equal(page.url(), address);
  assert.deepEqual(page.failures, []);
});

test("where the screen has no way back, Escape does nothing and Back leaves the page", async (t) => {
  const page = await open(t, "about:blank");
  const posted = [];
  page.on("request", (request) => posted.push(request.postDataJSON()?.tap));
  await page.goto(await serve(t, iabSample, "en", vendorList));
  await tap(page, page.getByRole("button", { name: "Details" }));
  await expectScreen(page, "Purposes");
  await page.keyboard.press("Escape");
  await page.keyboard.press("Escape");
  assert.equal(posted.filter((tap) => tap).length, 1);
  await page.goBack();
  assert.equal(page.url(), "about:blank");
});

test("Back and Forward of the browser never show what is not there", async (t) => {
  const page = await openPurposes(t);
  await tap(page, legalText(page));
  await expectScreen(page, "Legal text");
  await page.goBack();
  await expectScreen(page, "Purposes");
  await page.goForward().catch(() => {}); // turns round by itself
  await page.waitForFunction(() => !history.state?.screen);
  await expectScreen(page, "Purposes");
  await tap(page, legalText(page));
  await expectScreen(page, "Legal text");
  await page.waitForFunction(() => history.state?.screen);
});
