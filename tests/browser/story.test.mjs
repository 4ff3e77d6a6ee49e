import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, open, recorded, sample, serve } from "./browser.mjs";

after(closeBrowser);

const switchOf = (page, name) => page.getByRole("switch", { name, exact: true });

async function states(page, names) {
  return Promise.all(names.map((name) => switchOf(page, name).isChecked()));
}

// Taps and waits for the answer.
async function tap(page, locator) {
  const answered = page.waitForResponse((answer) => answer.url().endsWith("/event"));
  await locator.click();
  return (await answered).json();
}

test("parents, children and the global switch follow one another", async (t) => {
  const page = await open(t, await serve(t, sample));
  const names = ["All purposes", "Audience measurement", "Readership statistics",
    "Performance and crash reports"];
  assert.deepEqual(await states(page, names), [true, true, true, true]);
  await tap(page, switchOf(page, names[2]));
  assert.deepEqual(await states(page, names), [false, true, false, true]);
  await tap(page, switchOf(page, names[3]));
  assert.deepEqual(await states(page, names), [false, false, false, false]);
  await switchOf(page, names[1]).focus();
  const answered = page.waitForResponse((answer) => answer.url().endsWith("/event"));
  await page.keyboard.press("Space");
  await answered;
  await page.waitForFunction(() => !document.querySelector(".switch:not(:checked)"));
  assert.deepEqual(await states(page, names), [true, true, true, true]);
  assert.equal(await switchOf(page, names[1]).evaluate((e) => e === document.activeElement), true);
  const patch = await tap(page, switchOf(page, names[0]));
  assert.deepEqual(Object.keys(patch), ["own"]); // elements, and nothing else of the page
  assert.equal(await page.locator(".switch:checked").count(), 0);
  assert.deepEqual(page.failures, []);
});

test("leaving saves, and the states are there again", async (t) => {
  const address = await serve(t, sample);
  const page = await open(t, address);
  await tap(page, switchOf(page, "Personalisation"));
  await recorded(address);
  await page.goto(address); // leaves and opens anew
  const events = await recorded(address);
  const beacon = events.find((e) => e.send?.userInfo?.VXUserInfo_POSTData?.includes("PRIVACY_CAT"));
  assert.ok(beacon, "the save was sent");
  assert.deepEqual(await states(page, ["All purposes", "Audience measurement", "Personalisation"]),
    [false, true, false]);
});

test("a policy link opens its address in a new page", async (t) => {
  const address = await serve(t, sample);
  const page = await open(t, address);
  await page.context().route("https://harbourweekly.example/**", (route) =>
    route.fulfill({ body: "policy" }));
  const opened = page.context().waitForEvent("page");
  await page.getByRole("link", { name: /^How we measure/ }).click();
  await (await opened).waitForURL("https://harbourweekly.example/privacy/measurement");
  const events = await recorded(address);
  assert.deepEqual(events.filter((event) => event.open),
    [{ open: "https://harbourweekly.example/privacy/measurement" }]);
  assert.equal(await page.evaluate(() => document.querySelectorAll(".switch").length > 0), true);
});

test("a tap that does not arrive is taken back", async (t) => {
  const page = await open(t, await serve(t, sample));
  await page.route("**/event", (route) => route.abort());
  await switchOf(page, "Personalisation").click();
  await page.waitForFunction(() => !document.querySelector(".switch:not(:checked)"));
});

test("the screen scrolls down and never sideways", async (t) => {
  const page = await open(t, await serve(t, sample), { width: 320, height: 480 });
  const moved = page.waitForRequest((request) => request.postData()?.includes('"scroll"'));
  await page.mouse.move(160, 240);
  await page.mouse.wheel(200, 300);
  const { x, y } = JSON.parse((await moved).postData());
  assert.equal(x, 0);
  assert.ok(y > 0);
});
