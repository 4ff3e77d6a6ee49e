import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, expectStates, switchOf } from "./browser.mjs";
import { expectSameWhenOpened, expectSound, failuresButRefusals, happened, openStudio, showColumn } from "./studio.mjs";

after(closeBrowser);

const frame = (page) => page.frameLocator("#center iframe");
const openCenter = (page) => page.getByRole("button", { name: "Open privacy center" }).click();

// Waits for the last of these entries of the kind, and compares.
async function expectEntries(page, kind, titles) {
  await happened(page, titles.at(-1), kind);
  assert.deepEqual((await happened(page, "", kind)).map(({ title }) => title), titles);
}

const purposes = ["All purposes", "Audience measurement", "Readership statistics",
  "Performance and crash reports"];

// Waits until the switches of the purposes stand like this.
const expectPurposes = (page, states) =>
  expectStates(frame(page), Object.fromEntries(purposes.map((name, i) => [name, states[i]])));

test("the privacy center in the phone: open, switch, leave, open again", async (t) => {
  const page = await openStudio(t);
  await openCenter(page);
  await expectPurposes(page, [true, true, true, true]);
  await switchOf(frame(page), purposes[2]).click();
  await expectPurposes(page, [false, true, false, true]);
  await switchOf(frame(page), purposes[3]).click();
  await expectPurposes(page, [false, false, false, false]);
  await switchOf(frame(page), purposes[0]).click();
  await expectPurposes(page, [true, true, true, true]);
  await switchOf(frame(page), purposes[2]).click(); // and leave at once: it counts
  await page.getByRole("button", { name: "Save my choices" }).click();
  await page.getByText("Consent given").waitFor();
  await page.locator("#banner").waitFor({ state: "hidden" });
  await page.locator('#permanent-data [data-key="PRIVACY_CAT_11"][data-value="0"]').waitFor();
  await page.locator('#store [data-key="PRIVACY_CAT_12"][data-value="1"]').waitFor();
  await happened(page, "pc_save", "beacon");
  await expectEntries(page, "callback", ["consentCategoryChanged", "consentUpdated:"]);
  await expectEntries(page, "screen", ["Privacy center opened",
    "Readership statistics switched off", "Performance and crash reports switched off",
    "All purposes switched on", "Readership statistics switched off",
    "Privacy center left, the choices are saved"]);

  await openCenter(page);
  await expectPurposes(page, [false, true, false, true]);
  await page.getByRole("button", { name: "Kill hard" }).click();
  await page.getByText("Running, launch 2").waitFor();
  assert.equal(await page.locator("iframe").count(), 0);
  await expectSameWhenOpened(page);
  assert.deepEqual(failuresButRefusals(page), []);
});

test("an entry is copied as JSON, as curl and as a link that leads to it", async (t) => {
  const page = await openStudio(t);
  await page.context().grantPermissions(["clipboard-read", "clipboard-write"]);
  const copied = async (row, what) => {
    await row.hover();
    await row.getByRole("button", { name: `Copy: ${what}` }).click();
    await row.getByRole("button", { name: `Copy: ${what}` }).getByText("Copied").waitFor();
    return page.evaluate(() => navigator.clipboard.readText());
  };
  const entry = (await happened(page, "privacy.json", "request"))[0];
  const row = page.getByRole("article", { name: /GET .*privacy\.json/ }).first();
  assert.deepEqual(JSON.parse(await copied(row, "JSON")), entry);
  const curl = await copied(row, "curl");
  const [, address] = /^curl '(http:[^']*)'$/.exec(curl);
  assert.equal((await (await page.request.get(address)).json()).information.version, 1);
  const log = page.getByRole("article", { name: /module init/ });
  await log.hover();
  assert.equal(await log.getByRole("button", { name: "Copy: curl" }).count(), 0);
  const link = await copied(log, "Link");
  await page.goto("about:blank");
  await page.goto(link);
  await page.waitForFunction(() => document.activeElement.closest("article")?.textContent.includes("module init"));
  await expectSound(page, 1280);
  assert.deepEqual(page.failures, []);
});

test("a policy link opens a new page that cannot reach back", async (t) => {
  const page = await openStudio(t);
  await page.context().route("https://harbourweekly.example/**", (route) =>
    route.fulfill({ body: "policy" }));
  await openCenter(page);
  const opened = page.context().waitForEvent("page");
  await frame(page).getByRole("link", { name: /^How we measure/ }).click();
  const policy = await opened;
  await policy.waitForURL("https://harbourweekly.example/privacy/measurement");
  assert.equal(await policy.evaluate(() => window.opener), null);
  await page.locator("#timeline").getByText("Opens https://harbourweekly.example/privacy/measurement").waitFor();
});

test("two tabs show one center, and neither disturbs the other", async (t) => {
  const page = await openStudio(t);
  await openCenter(page);
  const other = await page.context().newPage();
  await other.goto(page.url());
  await expectPurposes(other, [true, true, true, true]);
  await other.bringToFront();
  const last = frame(other).getByRole("switch").last();
  await frame(other).locator("fieldset:enabled").waitFor(); // before, there is nothing to focus
  await last.focus();
  const list = frame(other).locator(".scroll");
  await list.evaluate((element) => { element.scrollTop = 200; element.dataset.mark = "same"; });
  await frame(page).locator(".scroll").evaluate((element) => { element.scrollTop = 90; });
  await switchOf(frame(page), purposes[2]).click();
  await expectPurposes(other, [false, true, false, true]);
  assert.deepEqual(await list.evaluate((element) =>
    [element.scrollTop, element.dataset.mark]), [200, "same"]);
  assert.equal(await last.evaluate((element) => element === document.activeElement), true);

  await Promise.all([switchOf(frame(page), purposes[3]).click(), last.click()]); // at once
  for (const each of [page, other]) {
    await expectPurposes(each, [false, false, false, false]);
    await frame(each).getByRole("switch", { checked: false }).nth(4).waitFor();
    assert.equal(await frame(each).getByRole("switch").last().isChecked(), false);
  }
  assert.deepEqual([...page.failures], []);
});

test("a center that is left or killed in one tab is gone in the other", async (t) => {
  const page = await openStudio(t);
  const other = await page.context().newPage();
  await other.goto(page.url());
  for (const end of ["Save my choices", "Kill hard"]) {
    await openCenter(page);
    await switchOf(frame(other), purposes[0]).waitFor();
    await page.getByRole("button", { name: end }).click();
    for (const each of [page, other])
      await each.locator("iframe").waitFor({ state: "detached" });
  }
});

test("what somebody without a browser taps is shown too", async (t) => {
  const page = await openStudio(t);
  await openCenter(page);
  const set = await switchOf(frame(page), purposes[2]).getAttribute("id");
  await page.evaluate(async (set) => {
    const center = await (await fetch("/center/")).text();
    await fetch("/api/center/event", {
      method: "POST",
      headers: { "X-Studio-Token": document.querySelector('meta[name="studio-token"]').content },
      body: JSON.stringify({ page: /data-page="([^"]*)"/.exec(center)[1], set, on: false }),
    });
  }, set);
  await expectPurposes(page, [false, true, false, true]);
});

test("a draft stays over reloads and what replaces it", async (t) => {
  const page = await openStudio(t);
  const editor = page.locator("#editor");
  const status = page.locator("#editor-status");
  const openEditor = () => page.getByRole("tab", { name: /^Configuration/ }).click();
  await openEditor();
  await status.getByText("Version 1 is published.").waitFor();
  const published = await editor.inputValue();
  await editor.fill(published.replace('"Local news"', '"Near you"'));
  const draft = await editor.inputValue();
  await page.reload();
  await openEditor();
  await status.getByText("Edited. Publishes as version 2.").waitFor();
  assert.equal(await editor.inputValue(), draft);
  for (const button of ["Revert", "Sample", "Add category"]) {
    await page.getByRole("button", { name: button, exact: true }).click();
    await page.waitForFunction((text) => document.querySelector("#editor").value !== text, draft);
    await editor.focus();
    await page.keyboard.press("Control+z");
    assert.equal(await editor.inputValue(), draft);
  }
  for (const version of ['"9"', "7.5", "3000000000"]) { // no version number: the next is taken
    await editor.fill(draft.replace(/"version": \d+/, `"version": ${version}`));
    await status.getByText("Edited. Publishes as version 2.").waitFor();
  }
  await page.getByRole("button", { name: "Publish\u2026" }).click();
  await page.getByRole("button", { name: "Publish", exact: true }).click();
  await status.getByText("Version 2 is published.").waitFor();
  await page.reload();
  await openEditor();
  await status.getByText("Version 2 is published.").waitFor();
  assert.deepEqual(page.failures, []);
});

test("before it is published, an edition says what it changes and does", async (t) => {
  const page = await openStudio(t);
  const editor = page.locator("#editor");
  const dialog = page.getByRole("dialog");
  const ask = () => page.getByRole("button", { name: "Publish\u2026" }).click();
  const openEditor = (page) => page.getByRole("tab", { name: /^Configuration/ }).click();
  await openEditor(page);
  await page.getByText("Version 1 is published.").waitFor();
  const other = await page.context().newPage();
  await other.goto(page.url());
  await openEditor(other);
  await other.getByText("Version 1 is published.").waitFor();
  const published = await editor.inputValue();

  await editor.fill(published.replace('"Local news"', '"Near you"'));
  await ask();
  await dialog.getByRole("heading", { name: "Publish version 2?" }).waitFor();
  await dialog.getByText("Users who have answered are not asked again").waitFor();
  await dialog.getByText("The application is told nothing.").waitFor();
  assert.match(await dialog.locator("del").allInnerTexts().then(String), /"version": 1.*"Local news"/s);
  assert.match(await dialog.locator("ins").allInnerTexts().then(String), /"version": 2.*"Near you"/s);
  await expectSound(page, 1280);
  await page.keyboard.press("Escape");
  await page.getByText("Edited. Publishes as version 2.").waitFor();

  for (const [change, effect, callbacks] of [
    ["Significant change", "Changed: the privacy configuration changed significantly.", "significantChangesInPrivacy"],
    ["Reset saved choices", "Reset: a new privacy configuration wiped the saved choices.", ""]]) {
    await editor.fill(published);
    await page.getByLabel(change).check();
    await ask();
    await dialog.getByText(`Users who have answered are asked again. ${effect}`).waitFor();
    await dialog.getByText(callbacks).first().waitFor();
    await page.keyboard.press("Escape");
  }
  const draft = await editor.inputValue();

  await other.locator("#editor").fill(published.replace('"Local news"', '"Villages"'));
  await other.getByRole("button", { name: "Publish\u2026" }).click();
  await other.getByRole("button", { name: "Publish", exact: true }).click();
  const comeBack = other.getByRole("button", { name: "Relaunch with version 2" });
  await comeBack.click();
  await comeBack.waitFor({ state: "hidden" });
  await other.getByText("Running, launch 2").waitFor();

  await page.reload();
  await openEditor(page);
  assert.equal(await editor.inputValue(), draft);
  await ask();
  await dialog.getByText("Version 2 was published elsewhere while you were editing version 1.").waitFor();
  await dialog.getByText('"Villages"').waitFor();
  for (const button of ["Reset", "Kill hard"]) {
    await page.keyboard.press("Escape");
    await page.getByRole("button", { name: button, exact: true }).click();
    if (button === "Reset") await page.getByRole("button", { name: "Delete the store" }).click();
    await page.getByText(`Running, launch ${button === "Reset" ? 3 : 4}`).waitFor();
    assert.equal(await editor.inputValue(), draft);
  }
  await ask();
  await dialog.getByRole("heading", { name: "Publish version 3?" }).waitFor();
  await other.evaluate((body) => fetch("/api/configuration", {
    method: "POST", body,
    headers: { "X-Studio-Token": document.querySelector('meta[name="studio-token"]').content },
  }), published.replace('"Local news"', '"Towns"'));
  await dialog.getByRole("button", { name: "Publish and relaunch" }).click();
  await dialog.getByText("Version 3 was published elsewhere while you were editing version 1.").waitFor();
  await dialog.getByText('"Towns"').waitFor();
  await dialog.getByRole("button", { name: "Publish and relaunch" }).click();
  await page.getByText("Running, launch 5").waitFor();
  await page.getByText("Version 4 is published.").waitFor();
  assert.deepEqual(failuresButRefusals(page), []);
});

// Holds the requests of a path until they are let go; `asked` is how many came.
async function hold(page, path) {
  const held = { asked: 0, letGo: () => {} };
  const until = new Promise((resolve) => { held.letGo = resolve; });
  await page.route(path, async (route) => {
    held.asked += 1;
    await until;
    await route.continue();
  });
  return held;
}

test("a slow studio does once what is pressed twice, and to the installation that it was meant for", async (t) => {
  const page = await openStudio(t);
  await page.getByText("First start").waitFor();
  const exported = await hold(page, "**/api/session");
  const download = page.waitForEvent("download");
  await page.getByRole("button", { name: "Export session" }).dblclick();
  await page.locator("#export[aria-busy=true]").waitFor();
  exported.letGo();
  await download;
  await page.locator("#export[aria-busy=false]").waitFor();
  assert.equal(exported.asked, 1);
  await page.unroute("**/api/session");

  await page.getByRole("tab", { name: /^Configuration/ }).click();
  const editor = page.locator("#editor");
  const status = page.locator("#editor-status");
  await status.getByText("Version 1 is published.").waitFor();
  const draft = (await editor.inputValue()).replace('"Local news"', '"Near you"');
  await editor.fill(draft);
  const published = await hold(page, "**/api/configuration?*");
  await page.getByRole("button", { name: "Publish\u2026" }).click();
  await page.getByRole("button", { name: "Publish", exact: true }).click();
  await page.getByRole("button", { name: "IAB mode" }).click();
  await status.getByText("Version 1 is published.").waitFor();
  published.letGo();
  await page.getByText("nothing was published: the mode was changed meanwhile").waitFor();
  assert.equal(await status.textContent(), "Version 1 is published.");
  await page.getByRole("button", { name: "Category mode" }).click();
  await status.getByText("Edited. Publishes as version 2.").waitFor();
  assert.equal(await editor.inputValue(), draft);

  const steps = ["world", "acceptAllConsent"].map((name) => JSON.stringify({ do: name })).join("\n");
  await page.locator("#session-file").setInputFiles({ name: "session.jsonl", mimeType: "text/plain", buffer: Buffer.from(steps) });
  const next = await hold(page, "**/api/session/next");
  await page.getByRole("button", { name: "Next step" }).dblclick();
  next.letGo();
  await page.getByText("1 of 2 steps played").waitFor();
  await page.getByText("Launch 4 is starting.").waitFor(); // its engine comes with the next step
  assert.equal(next.asked, 1);
  await expectSound(page, 1280);
  await page.getByRole("button", { name: "Next step" }).click();
  await page.getByText("Launch 4 is starting.").waitFor({ state: "hidden" });
  await page.getByRole("button", { name: "Close session" }).click();
  await page.getByText("Running, launch 5").waitFor();
});

test("findings follow what is typed, and lead to their place", async (t) => {
  const page = await openStudio(t);
  await page.getByRole("tab", { name: /^Configuration/ }).click();
  await page.getByText("Nothing to mend").waitFor();
  const editor = page.locator("#editor");
  const text = (await editor.inputValue()).replace('"Local news"', '"\u{1F4F0} Local"')
    .replace('"ID": "22"', '"\u{1F4F0}": 1, "ID": 22');
  await editor.fill(text);
  const finding = page.getByRole("button", { name: /subcategories\/1\/ID/ });
  await finding.click();
  const at = await editor.evaluate((element) => element.selectionStart);
  assert.equal(text.slice(at, at + 2), "22");
  assert.deepEqual(page.failures, []);
});

// A page whose studio says that this happened.
async function showEntries(page, entries) {
  await page.route("**/api/timeline?*", (route) => route.fulfill({ json: entries }));
  await page.route("**/api/events?*", (route) => route.abort());
  await page.reload();
  await page.locator("#timeline article").last().waitFor();
}

const entryAt = (id) => ({
  id, at: 1_780_000_000_000 + id, kind: id % 10 === 0 ? "beacon" : "log", level: id % 10 === 0 ? undefined : 2,
  title: `Entry ${id} ${"of many ".repeat(id % 7 === 0 ? 40 : 1)}`, body: id % 5 === 0 ? { number: id, lines: ["a", "b"] } : null,
});

test("of 5,000 entries those in view are in the page, and every one is in reach", async (t) => {
  const page = await openStudio(t);
  await showEntries(page, Array.from({ length: 5000 }, (_, index) => entryAt(index + 1)));
  const timeline = page.getByRole("feed");
  const entry = (id) => timeline.getByRole("article", { name: new RegExp(`: Entry ${id} `) });
  const focused = () => page.evaluate(() => document.activeElement.closest("article")?.ariaPosInSet);
  const newest = page.getByRole("button", { name: "Newest" });
  const inView = (id) => entry(id).evaluate((row) => {
    const view = row.closest("#timeline").getBoundingClientRect();
    const { top, bottom } = row.getBoundingClientRect();
    return top > view.top - 1 && bottom < view.bottom + 1;
  });
  const entriesInPage = async () => (await timeline.getByRole("article").count());

  await entry(5000).waitFor();
  assert.equal(await inView(5000), true);
  assert.equal(await newest.isVisible(), false);
  assert.ok(await entriesInPage() < 100);
  assert.deepEqual(await entry(5000).evaluate((row) => [row.ariaPosInSet, row.ariaSetSize]), ["5000", "5000"]);

  await page.locator("#clear").focus();
  await page.keyboard.press("Tab"); // the timeline is one stop
  assert.equal(await focused(), "5000");
  for (const [key, id] of [["ArrowUp", 4999], ["Home", 1], ["ArrowDown", 2], ["ArrowDown", 3]]) {
    await page.keyboard.press(key);
    assert.equal(await focused(), String(id));
    assert.equal(await inView(id), true);
  }
  await page.keyboard.press("PageDown");
  const there = Number(await focused());
  assert.ok(there > 4 && there < 40);
  assert.ok(await entriesInPage() < 100);
  await newest.click();
  assert.equal(await focused(), "5000");
  await newest.waitFor({ state: "hidden" });

  await page.getByRole("searchbox").fill("ENTRY 25");
  await page.getByText("111 of 5000").waitFor();
  const marked = () => page.evaluate(() => [...CSS.highlights.get("found")].map(String));
  assert.ok((await marked()).length > 5);
  assert.ok((await marked()).every((text) => text === "Entry 25"));
  await page.getByRole("searchbox").fill("entry 49"); // the rows fill the view, though none was measured
  await page.getByText("111 of 5000").waitFor();
  assert.ok(await timeline.evaluate((view) =>
    view.querySelector("article").getBoundingClientRect().top < view.getBoundingClientRect().top));
  await page.getByRole("searchbox").fill('"lines"'); // beacons stand open, the others are folded
  await page.getByText("1000 of 5000").waitFor();
  await timeline.locator('[data-kind="log"] .folded').first().waitFor();
  assert.equal(await timeline.locator('[data-kind="beacon"] .folded').first().isVisible(), false);
  await page.getByRole("searchbox").fill("entry 25");
  await timeline.hover();
  for (let at; at !== 0;) {
    await page.mouse.wheel(0, -2000);
    at = await timeline.evaluate((view) => view.scrollTop);
  }
  await entry(250).getByText("of many").click(); // a beacon's head closes it
  await entry(250).getByText('"lines"').waitFor({ state: "hidden" });
  await page.getByRole("searchbox").fill("");
  await page.getByRole("button", { name: "Log" }).click();
  await page.getByRole("button", { name: "Log" }).click();
  await entry(249).waitFor(); // what was looked at is still in view, with what lies around it
  assert.equal(await inView(250), true);
  await entry(250).getByText("of many").click();
  await entry(250).getByText('"lines"').waitFor();
  const happen = (entry) => page.evaluate((entry) => new BroadcastChannel("studio").postMessage({ entry }), entry);
  const topOf = (id) => entry(id).evaluate((row) => row.getBoundingClientRect().top);
  const top = await topOf(250);
  await happen(entryAt(5001)); // the first one goes for it
  await entry(250).and(page.locator('[aria-posinset="249"]')).waitFor();
  assert.equal(await topOf(250), top);
  await page.mouse.wheel(0, 1e7);
  await entry(5001).waitFor();
  await newest.waitFor({ state: "hidden" });
  await happen(entryAt(5002)); // is followed again
  await entry(5002).waitFor();
  assert.equal(await inView(5002), true);
  assert.deepEqual(page.failures.filter((failure) => !failure.includes("ERR_FAILED")), []);
});

const kControls = ["Relaunch", "Kill hard", "Reset", "+1 day", "+30 days", "+396 days"];

for (const options of [{ width: 1440, height: 900 }, { width: 768, height: 1024 }, { width: 390, height: 844 }])
  test(`process, clock and network are in view at ${options.width} points, wherever one is`, async (t) => {
    const page = await openStudio(t, options);
    await page.getByText("First start").waitFor();
    const controls = [...kControls.map((name) => page.getByRole("button", { name, exact: true })),
      page.getByRole("switch", { name: "Network" })];
    const expectInView = async () => {
      for (const control of controls) {
        const { x, y, width, height } = await control.boundingBox();
        assert.ok(x >= 0 && y >= 0 && x + width <= options.width && y + height <= options.height);
        assert.ok(await control.evaluate((node) => {
          const { x, y, width, height } = node.getBoundingClientRect();
          return node.contains(document.elementFromPoint(x + width / 2, y + height / 2));
        }));
      }
    };
    await expectInView();
    await page.mouse.move(options.width / 2, options.height / 2);
    await page.mouse.wheel(0, 5000);
    if (options.width < 760) {
      await page.waitForFunction(() => scrollY > 100);
      await showColumn(page, "State");
      await page.getByRole("heading", { name: "Engine" }).waitFor();
      await page.getByRole("button", { name: "Other moves of the clock" }).click();
      await page.getByLabel("Days").fill("2");
      await page.getByRole("button", { name: "Move", exact: true }).click();
      await page.getByText("+2 days").waitFor();
      await page.keyboard.press("Escape");
    }
    await expectInView();
    assert.deepEqual(page.failures, []);
  });

test("panes and theme stay as they were set", async (t) => {
  const page = await openStudio(t, { width: 1440, height: 900, colorScheme: null });
  const divider = page.getByRole("separator", { name: "Width of the application" });
  const width = () => page.locator("#left").evaluate((column) => Math.round(column.getBoundingClientRect().width));
  const scheme = (root) => root.locator("html").evaluate(() => matchMedia("(prefers-color-scheme: dark)").matches);
  const before = await width();
  await divider.focus();
  await page.keyboard.press("ArrowRight");
  assert.equal(await width(), before + 16);
  await page.locator(`[role=separator][aria-valuenow="${before + 16}"]`).waitFor();
  const { x, y } = await divider.boundingBox();
  await page.mouse.move(x + 8, y + 300);
  await page.mouse.down();
  await page.mouse.move(x + 48, y + 300);
  await page.mouse.up();
  assert.equal(await width(), before + 56);
  await divider.focus();
  await page.keyboard.press("Home");
  assert.equal(await width(), 260);

  await openCenter(page);
  await switchOf(frame(page), purposes[0]).waitFor();
  await page.getByLabel("Theme").selectOption("Dark");
  await page.reload();
  await switchOf(frame(page), purposes[0]).waitFor();
  assert.equal(await width(), 260);
  assert.equal(await page.getByLabel("Theme").inputValue(), "dark");
  assert.equal(await page.evaluate(() => getComputedStyle(document.body).backgroundColor), "rgb(14, 18, 23)");
  assert.equal(await scheme(frame(page)), true); // the application's user has it too
  assert.deepEqual(page.failures, []);
});

const kWindows = [{ width: 1280, height: 800 }, { width: 768, height: 1024, forcedColors: "active" },
  { width: 390, height: 844, colorScheme: "dark" }];
for (const options of kWindows)
  test(`axe finds nothing at ${options.width} points, nothing runs out sideways`, async (t) => {
    const page = await openStudio(t, options);
    await page.getByText("First start").waitFor();
    await expectSound(page, options.width);
    await openCenter(page);
    await switchOf(frame(page), purposes[0]).waitFor();
    await expectSound(page, options.width);
    await showColumn(page, "Timeline and configuration");
    await page.getByRole("searchbox").fill("beacon");
    await page.getByRole("article").first().waitFor();
    await expectSound(page, options.width);
    await page.getByRole("tab", { name: /^Configuration/ }).click();
    await page.locator("#editor").fill("{}");
    await page.locator("#findings li").first().waitFor();
    await expectSound(page, options.width);
    await showColumn(page, "State");
    await page.getByRole("button", { name: "Reset", exact: true }).click();
    await expectSound(page, options.width);
  });
