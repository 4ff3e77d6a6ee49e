// The way between page and host: slow, lost, out of step, and no script at all.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, expectStates, open, recorded, sample, serve, switchOf, tap } from "./browser.mjs";

after(closeBrowser);

// The same numbers for the same seed, each less than 1.
function randomNumbers(seed) {
  return () => {
    seed = (seed + 0x6d2b79f5) | 0;
    let t = Math.imul(seed ^ (seed >>> 15), 1 | seed);
    t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
    return ((t ^ (t >>> 14)) >>> 0) / 2 ** 32;
  };
}

// Holds each event of the page, before it arrives or when it was answered, until it is released.
async function hold(page, random) {
  const held = [];
  let wake = () => {};
  await page.route("**/event", async (route) => {
    const response = random() < 0.5 ? await route.fetch() : undefined;
    held.push(() => (response ? route.fulfill({ response }) : route.continue()));
    wake();
  });
  return {
    get waiting() { return held.length > 0; },
    async release() {
      while (!held.length) await new Promise((resolve) => { wake = resolve; });
      await held.shift()();
    },
  };
}

const statesOf = (page) => page.locator(".switch").evaluateAll((switches) =>
  Object.fromEntries(switches.map(({ id, checked }) => [id, checked])));

// How the switches of a fresh center stand after these events, one right after the other.
async function replayed(t, events) {
  const address = await serve(t, sample);
  const markup = await (await fetch(address)).text();
  const page = /data-page="([^"]*)"/.exec(markup)[1];
  for (const event of events)
    await fetch(`${address}/event`, { method: "POST", body: JSON.stringify({ page, ...event }) });
  return statesOf(await open(t, address)); // leaves, and shows what was saved
}

for (const seed of [1, 2, 3, 4])
  test(`taps count as they were meant, however late the answers are: ${seed}`, async (t) => {
    const random = randomNumbers(seed);
    const address = await serve(t, sample);
    const page = await open(t, address);
    const ids = Object.keys(await statesOf(page));
    const link = await hold(page, random);
    const events = [];
    let released = 0;
    for (let step = 0; step < 60; ++step) {
      if (random() < 0.4 && link.waiting) {
        await link.release();
        ++released;
        continue;
      }
      const set = ids[Math.floor(random() ** 2 * ids.length)]; // the first are all and a parent
      const on = await page.locator(`#${set}`).evaluate((element) => {
        element.click();
        return element.checked;
      });
      events.push({ set, on });
    }
    const last = page.waitForResponse((response) =>
      response.request().postDataJSON()?.n === events.length);
    for (; released < events.length; ++released) await link.release();
    await (await last).finished();
    const oracle = await replayed(t, events);
    await expectStates(page, { "All purposes": Object.values(oracle)[0] });
    assert.deepEqual(await statesOf(page), oracle, JSON.stringify(events));
    assert.deepEqual(page.failures, []);
    await page.unroute("**/event");
    await page.goto(address);
    assert.deepEqual(await statesOf(page), oracle);
  });

test("a lost connection is told, what was tapped is kept and sent once when it is back", async (t) => {
  const address = await serve(t, sample, "fr");
  const page = await open(t, address);
  let arrives = false; // the event, though not its answer
  await page.route("**/event", async (route) => {
    if (arrives) await route.fetch();
    await route.abort();
  });
  const alert = page.getByRole("alert");
  await switchOf(page, "Personalisation").click();
  await alert.getByText("connexion").waitFor();
  assert.equal(await switchOf(page, "Personalisation").isChecked(), false);
  arrives = true;
  await page.context().route("https://harbourweekly.example/**", (route) =>
    route.fulfill({ body: "policy" }));
  await page.getByRole("link", { name: /^How we measure/ }).click();
  await Promise.all([page.waitForEvent("requestfailed"), alert.getByRole("button").click()]);
  const opened = page.context().waitForEvent("page");
  await page.unrouteAll({ behavior: "wait" }); // the page's next attempt may be on its way
  await alert.getByRole("button").click();
  await opened;
  await alert.getByRole("button").waitFor({ state: "detached" });
  assert.equal((await recorded(address)).filter((event) => event.open).length, 1);
  await page.goto(address);
  await expectStates(page, { "Personalisation": false, "Audience measurement": true });
});

test("a page whose center was replaced says so, takes no more taps and leads on", async (t) => {
  const address = await serve(t, sample);
  const restarted = await serve(t, sample);
  for (const replace of [
    (page) => open(t, page.url()), // another tab; each visit opens the center anew
    (page) => page.route("**/event", (route) => route.continue({ url: `${restarted}/event` })),
    (page) => page.route("**/event", (route) => route.fulfill({ status: 404 })),
    async (page) => { // back to what the browser kept of it, which lacks what was tapped
      for (let i = 0; i < 2; ++i) await tap(page, switchOf(page, "Personalisation"));
      await page.goto("about:blank");
      await page.goBack();
    },
  ]) {
    const page = await open(t, address);
    await replace(page);
    // Telling its measures, the page may have heard of it before the tap.
    await switchOf(page, "Personalisation").evaluate((control) => control.click());
    const alert = page.getByRole("alert");
    await alert.getByText("This page is out of date").waitFor();
    assert.equal(await switchOf(page, "All purposes").isDisabled(), true);
    await page.unroute("**/event");
    await alert.getByRole("button", { name: "Show the current" }).click();
    await page.waitForFunction(() => !document.querySelector(".screen").disabled);
    await expectStates(page, { "Personalisation": true });
    await tap(page, switchOf(page, "Personalisation"));
    await tap(page, switchOf(page, "Personalisation"));
    await page.context().close();
  }
});

test("a page that is loaded anew with a tap under way works", async (t) => {
  const page = await open(t, await serve(t, sample));
  const link = await hold(page, () => 1);
  await switchOf(page, "Personalisation").click();
  const loaded = page.reload();
  await link.release().catch(() => {}); // the request may be gone with the page
  await loaded;
  await page.unroute("**/event");
  await tap(page, switchOf(page, "Audience measurement"));
  await expectStates(page, { "Audience measurement": false, "Readership statistics": false });
  assert.equal(await page.getByRole("alert").textContent(), "");
});

test("without script the page can be read and says that nothing can be changed", async (t) => {
  const page = await open(t, await serve(t, sample), { javaScriptEnabled: false });
  await page.locator(".noscript").waitFor();
  assert.match(await page.locator(".noscript").textContent(), /allow JavaScript/);
  await page.getByRole("heading", { name: "Personalisation" }).waitFor();
  assert.equal(await switchOf(page, "Personalisation").isDisabled(), true);
  for (const link of await page.getByRole("link").all())
    assert.equal(await link.isDisabled(), true);
});
