// A user's way through the IAB privacy center, and what its TC string says of it, read by the IAB's
// own library.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { TCString } from "../tcf/node_modules/@iabtechlabtcf/core/lib/mjs/index.js";
import { closeBrowser, expectStates, iabSample, open, recorded, serve, switchOf, tap, vendorList } from "./browser.mjs";

after(closeBrowser);

const button = (page, name) => page.getByRole("button", { name, exact: true });
const heading = (page, name) => page.getByRole("heading", { name, exact: true }).waitFor();

// Reads the popup to its end, which wakes its answers.
async function readAll(page) {
  assert.equal(await button(page, "Accept all").getAttribute("aria-disabled"), "true");
  await page.locator(".scroll").evaluate((list) => list.scrollTo(0, list.scrollHeight));
  await page.waitForFunction(() => !document.querySelector('[aria-disabled="true"]'));
}

const idsOf = (vector) => [...vector].filter(([, value]) => value).map(([id]) => id);

/// Leaves the center, which saves, and opens a new one; what the string then says.
async function saved(page, address) {
  await page.goto(address);
  const events = await recorded(address);
  const model = TCString.decode(events.findLast(({ tc }) => tc).tc);
  const keys = events.flatMap(({ sdk }) => (sdk?.[1]?.startsWith("PRIVACY_FEAT_") ? [sdk[1]] : []));
  assert.deepEqual(new Set(keys), new Set(["PRIVACY_FEAT_13002", "PRIVACY_FEAT_13004"])); // one of each
  return {
    purposes: idsOf(model.purposeConsents),
    legitimate: idsOf(model.purposeLegitimateInterests),
    features: idsOf(model.specialFeatureOptins),
    vendors: idsOf(model.vendorConsents),
    vendorsLegitimate: idsOf(model.vendorLegitimateInterests),
  };
}

const { vendors } = JSON.parse(await readFile(vendorList, "utf8"));
const withSwitch = Object.values(vendors).filter((vendor) =>
  !vendor.deletedDate && vendor.purposes.length + vendor.legIntPurposes.length > 0).map(({ id }) => id);

test("what is tapped is what the string says", async (t) => {
  const address = await serve(t, iabSample, "en", vendorList);
  const page = await open(t, address, { height: 500 });
  await readAll(page);
  await page.getByRole("link", { name: "our partners" }).last().click();
  await heading(page, "Partners");
  await tap(page, button(page, "Purposes"));
  await heading(page, "Purposes");
  await tap(page, switchOf(page, "Choose advertisements by what you see: Consent"));
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
  await tap(page, switchOf(page, "AdQuarry: Consent"));
  assert.deepEqual(page.failures, []);

  const choice = { purposes: [2], legitimate: [2], // a switch sets both
    features: [1], vendors: [6], vendorsLegitimate: [6] };
  assert.deepEqual(await saved(page, address), choice);
  await tap(page, button(page, "Details"));
  await expectStates(page, { "Choose advertisements by what you see: Consent": true,
    "Measure advertisements: Consent": false, "Use your exact location": true });
  await tap(page, button(page, "Save my choices")); // as they were restored
  assert.deepEqual(await saved(page, address), choice);
});

// No legitimate interest of a purpose: no switch that has one was touched.
const refused = { purposes: [], legitimate: [], features: [], vendors: [], vendorsLegitimate: [] };
const accepted = { purposes: [1, 2, 3, 4, 5, 6, 7, 8, 9, 10], legitimate: [], features: [1, 2],
  vendors: withSwitch, vendorsLegitimate: withSwitch };
for (const [answer, said] of [["Refuse all", refused], ["Accept all", accepted]])
  test(`${answer} is what the string says`, async (t) => {
    const address = await serve(t, iabSample, "en", vendorList);
    const page = await open(t, address, { height: 500 });
    await readAll(page);
    await tap(page, button(page, answer));
    assert.deepEqual(await saved(page, address), said);
  });
