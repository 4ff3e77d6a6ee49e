import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, expectStates, open, recorded, sample, serve, switchOf, tap } from "./browser.mjs";

after(closeBrowser);

test("parents, children and the global switch follow one another", async (t) => {
  const page = await open(t, await serve(t, sample));
  const names = ["All purposes", "Audience measurement", "Readership statistics",
    "Performance and crash reports"];
  const expect = (...states) =>
    expectStates(page, Object.fromEntries(names.map((name, i) => [name, states[i]])));
  await expect(true, true, true, true);
  await tap(page, switchOf(page, names[2]));
  await expect(false, true, false, true);
  await tap(page, switchOf(page, names[3]));
  await expect(false, false, false, false);
  const parent = switchOf(page, names[1]);
  await parent.focus();
  await tap(page, parent, () => page.keyboard.press("Space"));
  await expect(true, true, true, true);
  assert.equal(await page.locator(".switch:not(:checked)").count(), 0);
  assert.equal(await parent.evaluate((element) => element === document.activeElement), true);
  const patch = await tap(page, switchOf(page, names[0]));
  assert.deepEqual(Object.keys(patch), ["off", "texts", "say"]); // no element is written anew
  await page.waitForFunction(() => !document.querySelector(".switch:checked"));
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
  await expectStates(page,
    { "All purposes": false, "Audience measurement": true, "Personalisation": false });
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

test("a page that does not listen yet takes no tap", async (t) => {
  const page = await open(t, "about:blank");
  let goOn;
  const held = new Promise((resolve) => { goOn = resolve; });
  await page.route("**/surface.js", async (route) => { await held; await route.continue(); });
  await page.goto(await serve(t, sample), { waitUntil: "commit" });
  const control = page.locator(".switch").first();
  const { x, y } = await control.boundingBox();
  await page.mouse.click(x + 20, y + 20);
  await page.keyboard.press("Tab");
  await page.keyboard.press("Space");
  assert.equal(await control.isChecked(), true);
  goOn();
  await tap(page, control);
  assert.equal(await control.isChecked(), false);
});

test("the screen scrolls down and never sideways", async (t) => {
  const page = await open(t, await serve(t, sample), { width: 320, height: 480 });
  const moved = page.waitForRequest((request) => request.postDataJSON()?.y > 0);
  await page.locator(".scroll").hover(); // waits until it is painted
  await page.mouse.wheel(200, 300);
  const { x, y } = (await moved).postDataJSON();
  assert.equal(x, 0);
  assert.ok(y > 0);
});
