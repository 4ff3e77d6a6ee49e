import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, expectStates, switchOf } from "./browser.mjs";
import { expectSound, failuresButRefusals, openStudio } from "./studio.mjs";

after(closeBrowser);

const frame = (page) => page.frameLocator("#center iframe");
const openCenter = (page) => page.getByRole("button", { name: "Open privacy center" }).click();

// Waits until the timeline has as many entries of the kind, and compares.
async function expectEntries(page, kind, titles) {
  const entries = page.locator(`#timeline [data-kind="${kind}"] .title`);
  await entries.nth(titles.length - 1).waitFor();
  assert.deepEqual(await entries.allTextContents(), titles);
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
  await page.locator('#timeline [data-kind="beacon"]').nth(1).waitFor(); // the view's and the save's
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
  assert.deepEqual(failuresButRefusals(page), []);
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
  await page.getByRole("button", { name: "Publish", exact: true }).click();
  await status.getByText("Version 2 is published.").waitFor();
  await page.reload();
  await openEditor();
  await status.getByText("Version 2 is published.").waitFor();
  assert.deepEqual(page.failures, []);
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

for (const options of [{ width: 1280, height: 800 }, { width: 390, height: 844, colorScheme: "dark" }])
  test(`axe finds nothing at ${options.width} points, nothing runs out sideways`, async (t) => {
    const page = await openStudio(t, options);
    await page.getByText("First start").waitFor();
    await expectSound(page, options.width);
    await openCenter(page);
    await switchOf(frame(page), purposes[0]).waitFor();
    await page.getByRole("tab", { name: /^Configuration/ }).click();
    await page.locator("#editor").fill("{}");
    await page.locator("#findings li").first().waitFor();
    await expectSound(page, options.width);
  });
