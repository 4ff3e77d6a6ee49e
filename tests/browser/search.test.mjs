// The vendor list searched by name.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { closeBrowser, iabSample, open, serve, switchOf, tap, vendorList } from "./browser.mjs";

after(closeBrowser);

const field = (page) => page.getByRole("searchbox", { name: "Search by name" });
const wholeList = (page) =>
  page.getByText("Accept all and refuse all concern the whole list, not only what is shown.", { exact: true });
const details = (page, vendor) => page.getByRole("button", { name: `Details ${vendor}`, exact: true });
const said = (page, text) =>
  page.waitForFunction((wanted) => document.getElementById("status").textContent === wanted, text);

// The page of a vendor list with these names, in a configuration that shows it first.
async function openVendors(t, names, options) {
  const list = JSON.parse(await readFile(vendorList, "utf8"));
  const some = Object.values(list.vendors).find(({ deletedDate }) => !deletedDate);
  const vendors = names &&
    Object.fromEntries(names.map((name, i) => [i + 1, { ...some, id: i + 1, name }]));
  const page = await open(t, await serve(t, iabSample, "en", names ? { ...list, vendors } : vendorList), options);
  await tap(page, page.getByRole("button", { name: "Details" }));
  assert.equal(await field(page).isVisible(), false, "the purposes are not searched");
  await tap(page, page.locator(".onward"));
  return page;
}

const shown = (page) => page.locator(".searchable > :visible h2").allTextContents();

test("letters of a name leave what has it, whatever their case and accents", async (t) => {
  const names = ["Ångström Média", "Øresund Łódź", "Straße & Co", "ΔΙΟΣ", "Дія", "中文广告", "Adtech", "tech (ad)"];
  const page = await openVendors(t, names);
  for (const [letters, wanted] of [
    ["angstrom", ["Ångström Média"]], ["MÉDIA", ["Ångström Média"]], ["oresund lodz", ["Øresund Łódź"]],
    ["strasse", ["Straße & Co"]], ["STRAẞE", ["Straße & Co"]], ["διος", ["ΔΙΟΣ"]], ["διοσ", ["ΔΙΟΣ"]], ["дія", ["Дія"]],
    ["广告", ["中文广告"]], ["  tech   ad ", ["Adtech", "tech (ad)"]], ["(", ["tech (ad)"]], ["\\", []],
    [".*", []], ["   ", names]]) {
    await field(page).fill(letters);
    assert.deepEqual((await shown(page)).sort(), [...wanted].sort(), letters);
  }
  assert.deepEqual(page.failures, []);
});

test("what matches is counted and announced, and that the answers concern all", async (t) => {
  const page = await openVendors(t);
  await page.getByText("39 of 39 shown").waitFor();
  assert.equal(await wholeList(page).isVisible(), false);
  await page.locator(".scroll").evaluate((list) => list.scrollTo(0, 800));
  await field(page).pressSequentially("umbra");
  await page.getByText("1 of 39 shown", { exact: true }).first().waitFor();
  assert.equal(await page.locator(".scroll").evaluate((list) => list.scrollTop), 0);
  await wholeList(page).first().waitFor();
  await said(page, "1 of 39 shown Accept all and refuse all concern the whole list, not only what is shown.");
  assert.equal(await page.getByText("Nothing has this name.").isVisible(), false);
  await field(page).fill("no such partner");
  await page.getByText("Nothing has this name.", { exact: true }).waitFor();
  await said(page, "Nothing has this name. Accept all and refuse all concern the whole list, not only what is shown.");
  await field(page).press("Escape");
  assert.equal(await field(page).inputValue(), "");
  assert.equal(await field(page).evaluate((element) => element === document.activeElement), true);
  await said(page, "39 of 39 shown");
  assert.equal(await wholeList(page).isVisible(), false);
  assert.equal(await page.locator(".searchable > :visible").count(), 39);
});

test("by keyboard from the field to what was found, which stays through taps and opened rows", async (t) => {
  const page = await openVendors(t);
  await field(page).fill("umbra");
  await page.keyboard.press("Enter"); // nothing happens
  await page.keyboard.press("Tab");
  const control = switchOf(page, "Umbra Household Graph: Consent");
  assert.equal(await control.evaluate((element) => element === document.activeElement), true);
  await tap(page, control, () => page.keyboard.press("Space"));
  for (const expanded of ["true", "false", "true"]) {
    await tap(page, details(page, "Umbra Household Graph"), () => details(page, "Umbra Household Graph").press("Enter"));
    assert.equal(await details(page, "Umbra Household Graph").getAttribute("aria-expanded"), expanded);
    assert.deepEqual(await shown(page), ["Umbra Household Graph"]);
  }
  await page.keyboard.press("Escape"); // from wherever one is
  assert.equal(await field(page).inputValue(), "");
  assert.equal(await details(page, "Umbra Household Graph").evaluate((element) => {
    const { top, bottom } = element.getBoundingClientRect();
    const list = document.querySelector(".scroll").getBoundingClientRect();
    return element === document.activeElement && top >= list.top && bottom <= list.bottom;
  }), true, "what has the focus stays in sight");
  assert.equal(await control.isChecked(), true);
});

test("a row that another page opens comes to light no more than it matches, and the next list is whole", async (t) => {
  const page = await openVendors(t);
  await field(page).fill("kestrel d");
  await page.evaluate(async () => { // as if a tap came from elsewhere
    const { send } = await import("/sending.js");
    send({ tap: document.querySelector(".searchable > [hidden] [aria-expanded]").id });
  });
  await page.locator(".searchable [aria-expanded='true']").waitFor({ state: "attached" });
  assert.deepEqual(await shown(page), ["Kestrel DSP"]);
  await tap(page, page.locator(".onward"));
  assert.equal(await field(page).isVisible(), false);
  assert.equal(await wholeList(page).isVisible(), false);
  await tap(page, page.locator(".onward"));
  assert.equal(await field(page).inputValue(), "");
  assert.equal(await page.locator(".searchable > :visible").count(), 39);
  assert.deepEqual(page.failures, []);
});

test("Escape ends what is being composed and no search, and a phone's Enter shows what was found", async (t) => {
  const page = await openVendors(t, undefined, { isMobile: true, hasTouch: true });
  await field(page).fill("計");
  await field(page).evaluate((element) => element.dispatchEvent(
    new KeyboardEvent("keydown", { key: "Escape", isComposing: true, bubbles: true })));
  assert.deepEqual(await shown(page), ["さくら計測"]);
  await field(page).press("Enter");
  assert.equal(await field(page).evaluate((element) => element === document.activeElement), false);
  assert.deepEqual(await shown(page), ["さくら計測"]);
});
