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

const isInSight = (locator) => locator.evaluate((element) => {
  const { top, bottom } = element.getBoundingClientRect();
  const list = document.querySelector(".scroll").getBoundingClientRect();
  return top >= list.top && bottom <= list.bottom;
});

test("each way on opens at the top with the focus on its heading, and leads back to where it began", async (t) => {
  const page = await open(t, await serve(t, iabSample, "en", vendorList), { height: 500 });
  const button = (name) => page.getByRole("button", { name, exact: true });
  const expectFresh = async (heading) => {
    await expectScreen(page, heading);
    assert.equal(await isFocused(page.locator(".screen").getByRole("heading").first()), true, heading);
    assert.equal(await page.locator(".scroll").evaluate((element) => element.scrollTop), 0, heading);
    await page.locator(".scroll").evaluate((element) => element.scrollTo(0, element.scrollHeight));
  };
  const words = page.locator(".label").filter({ has: page.getByRole("link", { name: "our partners" }) }).last();
  await tap(page, words, () => words.getByRole("link").click());
  await expectFresh("Partners");
  await tap(page, button("Purposes"));
  await expectFresh("Purposes");
  for (let i = 0; i < 2; ++i) {
    const related = page.getByRole("button", { name: /^Partners for this/ }).nth(3);
    await tap(page, related);
    await expectFresh("Partners");
    await tap(page, button("Purposes"));
    await expectScreen(page, "Purposes");
    assert.equal(await isFocused(related), true, "where the list was left");
    assert.equal(await isInSight(related), true);
    await tap(page, button("Partners")); // from the bar, not out of the list
    await expectFresh("Partners");
    await tap(page, button("Purposes"));
    await expectFresh("Purposes");
    await tap(page, legalText(page));
    await expectFresh("Legal text");
    await tap(page, button("Back"));
    await expectScreen(page, "Purposes");
    assert.equal(await isFocused(legalText(page)), true);
  }
  await tap(page, button("Partners"));
  await page.request.get(new URL("detail", page.url()).href);
  await page.evaluate(async () => (await import("/surface.js")).update());
  await expectFresh("Privacy policy");
  await page.keyboard.press("Escape");
  await expectFresh("Partners");
  assert.deepEqual(page.failures, []);
});
