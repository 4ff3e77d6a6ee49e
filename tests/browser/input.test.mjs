// Keys, wheel and pointer on the page.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, expectStates, open, sample, serve, switchOf, tap } from "./browser.mjs";

after(closeBrowser);

// All events that the page posts from now on, without its scrolling.
function eventsOf(page) {
  const events = [];
  page.on("request", (request) => {
    const event = request.url().endsWith("/event") ? request.postDataJSON() : {};
    if (event.tap || event.set) events.push(event.tap ?? [event.set, event.on]);
  });
  return events;
}

const idOf = (locator) => locator.getAttribute("id");
const link = (page) => page.getByRole("link", { name: /^How we measure/ });

async function openWithPolicies(t) {
  const page = await open(t, await serve(t, sample));
  await page.context().route("https://harbourweekly.example/**", (route) =>
    route.fulfill({ body: "policy" }));
  return page;
}

const top = (page) => page.locator(".scroll").evaluate((element) => element.scrollTop);

test("on a fresh page keys and wheel move the list, and nothing moves the page", async (t) => {
  const address = await serve(t, sample);
  for (const operate of [
    (page) => page.keyboard.press("End"),
    (page) => page.keyboard.press("PageDown"),
    (page) => page.keyboard.press("ArrowDown"),
    (page) => page.keyboard.press("Space"),
    (page) => page.mouse.wheel(0, 300), // at the top left corner
    (page) => page.mouse.move(200, 300).then(() => page.mouse.wheel(0, 300)),
  ]) {
    const page = await open(t, address, { width: 390, height: 500 });
    await page.waitForFunction(() => !document.querySelector(".screen").disabled);
    await operate(page);
    await page.waitForFunction(() => document.querySelector(".scroll").scrollTop > 20);
    const { scrollTop, scrollHeight, clientHeight } = await page.evaluate(() => {
      scrollTo(0, 1000);
      const { scrollTop, scrollHeight, clientHeight } = document.scrollingElement;
      return { scrollTop, scrollHeight, clientHeight };
    });
    assert.deepEqual([scrollTop, scrollHeight], [0, clientHeight]);
    await page.context().close();
  }
});

test("one act of the user is one event", async (t) => {
  const page = await openWithPolicies(t);
  const events = eventsOf(page);
  const control = switchOf(page, "Personalisation");
  const id = await idOf(control);
  const last = async () => { // after which all before it has arrived
    await tap(page, switchOf(page, "All purposes"));
    events.pop();
    return events.splice(0);
  };
  await control.focus();
  for (const key of ["Enter", "Space"]) {
    const before = await control.isChecked();
    for (let repeat = 0; repeat < 5; ++repeat) await page.keyboard.down(key); // held
    await page.keyboard.up(key);
    assert.deepEqual(await last(), [[id, !before]], key);
    await control.focus();
  }
  const { x, y, width, height } = await control.boundingBox();
  const before = await control.isChecked();
  await page.mouse.move(x + width - 8, y + height / 2);
  await page.mouse.down();
  await page.mouse.move(x + width - 30, y + height / 2, { steps: 5 }); // drawn over, as a slider
  await page.mouse.up();
  assert.deepEqual(await last(), [[id, !before]]);

  await link(page).dblclick();
  assert.deepEqual(await last(), [await idOf(link(page))]);
  await link(page).focus();
  for (let repeat = 0; repeat < 5; ++repeat) await page.keyboard.down("Enter");
  await page.keyboard.up("Enter");
  assert.deepEqual(await last(), [await idOf(link(page))]);
});

test("a button whose tap is under way takes no other", async (t) => {
  const page = await openWithPolicies(t);
  const events = eventsOf(page);
  let goOn;
  const held = new Promise((resolve) => { goOn = resolve; });
  await page.route("**/event", async (route) => { await held; await route.continue(); });
  await link(page).click();
  await link(page).focus();
  await page.keyboard.press("Enter");
  goOn();
  await tap(page, switchOf(page, "All purposes"));
  assert.equal(events.length, 2);
});

test("a title switches its row's switch, unless it is selected; other texts do nothing", async (t) => {
  const page = await openWithPolicies(t);
  const title = page.getByRole("heading", { name: "Personalisation", exact: true });
  const control = switchOf(page, "Personalisation");
  for (const on of [false, true]) {
    await tap(page, control, () => title.click());
    assert.equal(await control.isChecked(), on);
  }
  const events = eventsOf(page);
  await page.getByText(/^Adapts the front page/).click();
  await title.evaluate((element) => getSelection().selectAllChildren(element));
  await title.dispatchEvent("click");
  await page.keyboard.press("Escape"); // no way back here
  await tap(page, switchOf(page, "All purposes"));
  assert.equal(events.length, 1);
});

test("whatever may be opened is an address to the browser", async (t) => {
  const page = await openWithPolicies(t);
  const addresses = ["https://a.example:8443?b", "http://127.0.0.1:80/", "https://[2001:db8::1]:443/a",
    "mailto:a@b.example", "mailto:", "https://a.example/@b:c", "http://a_b.example/"];
  const notParsed = (all) => all.filter((each) => !URL.canParse(each));
  assert.deepEqual(await page.evaluate(notParsed, addresses), []);
  // One that is none, from a host that is not careful, stops nothing.
  await page.route("**/event", (route) => route.fulfill({ json: { open: ["http://[::1"] } }),
    { times: 1 });
  await link(page).click();
  await tap(page, switchOf(page, "All purposes"));
  await expectStates(page, { "All purposes": false });
  assert.deepEqual(page.failures, []);
});
