// A user's way through the IAB privacy center, and what its TC string says of it, read by the IAB's
// own library.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { TCString } from "../tcf/node_modules/@iabtechlabtcf/core/lib/mjs/index.js";
import { closeBrowser, iabSample, open, recorded, serve, switchOf, tap, vendorList } from "./browser.mjs";

after(closeBrowser);

const button = (page, name) => page.getByRole("button", { name, exact: true });
const heading = (page, name) => page.getByRole("heading", { name, exact: true }).waitFor();

// Reads the popup to its end, which wakes its answers.
async function readAll(page) {
  assert.equal(await button(page, "Accept all").getAttribute("aria-disabled"), "true");
  await page.locator(".scroll").evaluate((list) => list.scrollTo(0, list.scrollHeight));
  await page.waitForFunction(() => !document.querySelector('[aria-disabled="true"]'));
}

// Leaves the center, which saves, and gives what the string then says.
async function decoded(address) {
  await fetch(address); // a new visit leaves the center before it
  const strings = (await recorded(address)).filter(({ tc }) => tc);
  return TCString.decode(strings.at(-1).tc);
}

const idsOf = (vector) => [...vector].filter(([, value]) => value).map(([id]) => id);

test("what is tapped is what the string says", async (t) => {
  const address = await serve(t, iabSample, "en", vendorList);
  const page = await open(t, address, { height: 500 });
  await readAll(page);
  await page.getByRole("link", { name: "our partners" }).last().click();
  await heading(page, "Partners");
  await tap(page, button(page, "Purposes"));
  await heading(page, "Purposes");
  await tap(page, switchOf(page, "Choose advertisements by what you see Consent"));
  await tap(page, switchOf(page, "Use your exact location"));
  await tap(page, page.getByRole("button", { name: /Partners for this/ }).first());
  await heading(page, "Partners");
  await tap(page, button(page, "Purposes"));
  await tap(page, button(page, "Partners"));
  const details = page.getByRole("button", { name: "Details AdQuarry", exact: true });
  for (const expanded of ["true", "false", "true"]) {
    await tap(page, details);
    assert.equal(await details.getAttribute("aria-expanded"), expanded);
  }
  await tap(page, switchOf(page, "AdQuarry Consent"));
  assert.deepEqual(page.failures, []);

  const model = await decoded(address);
  assert.deepEqual(idsOf(model.purposeConsents), [2]);
  assert.deepEqual(idsOf(model.purposeLegitimateInterests), [2]); // a switch sets both
  assert.deepEqual(idsOf(model.specialFeatureOptins), [1]);
  assert.deepEqual(idsOf(model.vendorConsents), [6]);
  assert.deepEqual(idsOf(model.vendorLegitimateInterests), [6]);
});

for (const [answer, vendors] of [["Refuse all", 0], ["Accept all", 1]])
  test(`${answer} is what the string says`, async (t) => {
    const address = await serve(t, iabSample, "en", vendorList);
    const page = await open(t, address, { height: 500 });
    await readAll(page);
    await tap(page, button(page, answer));
    const model = await decoded(address);
    assert.equal(idsOf(model.vendorConsents).length > 0, Boolean(vendors));
    assert.equal(idsOf(model.purposeConsents).length > 0, Boolean(vendors));
  });
