import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser } from "./browser.mjs";
import { expectSound, openStudio } from "./studio.mjs";

after(closeBrowser);

const tab = (page) => page.getByRole("tab", { name: "TC string" });
const panel = (page) => page.getByRole("tabpanel", { name: "TC string" });
const row = (page, name) => panel(page).getByRole("row", { name });

// The panel of a studio in IAB mode, when the vendor list is in force.
async function openPanel(t, options) {
  const page = await openStudio(t, options, ["--iab"]);
  await tab(page).click();
  await panel(page).getByText("Vendor list version 3, 39 vendors and 3 deleted.").waitFor();
  return page;
}

const accept = (page) => page.getByRole("button", { name: "Accept all" }).click();

test("what was chosen stands in the panel, by name", async (t) => {
  const page = await openPanel(t);
  await panel(page).getByText("No TC string is stored.").waitFor();

  await accept(page);
  const vendors = panel(page).getByText("39 with consent, 39 with legitimate interest, of 39");
  await vendors.click();
  await row(page, /^6 AdQuarry yes yes$/).waitFor();
  await row(page, '767 <Angle> & "Quote" Media yes yes').waitFor();
  await panel(page).getByRole("searchbox").fill("kestrel");
  await panel(page).getByText("2 found").waitFor();
  await row(page, /^6 AdQuarry/).waitFor({ state: "hidden" });
  await panel(page).getByText("No purposes: the privacy configuration names no vendors").waitFor();
  await row(page, "7 Measure advertisements no no").waitFor();
  await page.locator('#store [data-key="IABTCF_CmpSdkID"][data-value="90"]').waitFor();

  await page.getByRole("button", { name: "Refuse all" }).click();
  await panel(page).getByText("0 with consent, 0 with legitimate interest, of 39").waitFor();
  await row(page, "72 Kestrel DSP no no").waitFor(); // still searched for
  assert.deepEqual(page.failures, []);
});

test("vendors are named with one tick, and bring their purposes along", async (t) => {
  const page = await openPanel(t);
  await page.getByRole("tab", { name: /^Configuration/ }).click();
  await page.getByText("Nothing to mend").waitFor();
  await page.getByLabel("Name the list\u2019s vendors").check();
  await page.getByRole("button", { name: "Publish and relaunch" }).click();
  await page.getByText("Running, launch 2").waitFor();
  await page.locator("#timeline").getByText(/downloaded, version 2/).waitFor({ state: "attached" });
  await accept(page);
  await tab(page).click();
  await row(page, "1 Keep and read information on this device yes no").waitFor();
  await row(page, "10 Improve products yes yes").waitFor();
  await row(page, "1 Use your exact location yes").waitFor();
  assert.deepEqual(page.failures, []);
});

test("the mode changes with the installation, and back", async (t) => {
  const page = await openStudio(t);
  await accept(page);
  await page.getByText("Consent given").waitFor();
  assert.equal(await tab(page).count(), 0);
  await page.getByRole("button", { name: "IAB mode" }).click();
  await page.getByText("First start").waitFor();
  await tab(page).click();
  await panel(page).getByText("Vendor list version 3").waitFor();
  await page.getByRole("button", { name: "Category mode" }).click();
  await page.getByText("Consent given").waitFor();
  await page.getByRole("tabpanel", { name: "Timeline" }).waitFor();
  await page.locator('#store [data-key="PRIVACY_CAT_11"]').waitFor();
  assert.deepEqual(page.failures, []);
});

const vendors = (...ids) => ({ MaxVendorId: 767, Vendors: ids });
const core = {
  Created: "2026-01-31T09:30:00.0Z", LastUpdated: "2026-02-01T09:30:00.0Z", CmpId: 90, CmpVersion: 471,
  ConsentScreen: 5, ConsentLanguage: "DE", VendorListVersion: 3, TcfPolicyVersion: 2,
  IsServiceSpecific: true, UseNonStandardStacks: false, SpecialFeatureOptIns: [12],
  PurposesConsent: [1, 24], PurposesLITransparency: [], PurposeOneTreatment: false, PublisherCC: "AA",
  VendorConsent: vendors(2, 767), VendorLegitimateInterest: vendors(4000),
  PubRestrictions: [{ PurposeId: 2, RestrictionType: 0, Vendors: [767, 4000] },
    { PurposeId: 63, RestrictionType: 2, Vendors: [2] }],
};
const model = {
  Core: core, DisclosedVendors: vendors(6, 8), AllowedVendors: vendors(),
  PublisherTC: { PubPurposesConsent: [1, 3], PubPurposesLITransparency: [], NumCustomPurposes: 2,
    CustomPurposesConsent: [2], CustomPurposesLITransparency: [] },
};

test("everything that a string can hold is shown, and why one cannot be decoded", async (t) => {
  const page = await openPanel(t);
  const state = await (await page.request.get(new URL("api/state", page.url()).href)).json();
  const show = async (tcString) => { // a stream that says this and nothing else
    Object.assign(state.application, { tcString });
    const body = `event: state\ndata: ${JSON.stringify(state)}\n\n`;
    await page.route("**/api/events", (route) => route.fulfill({ contentType: "text/event-stream", body }));
    await page.reload();
    await tab(page).click();
  };
  await show({ text: "<b>", model });
  await row(page, "24 Not in the vendor list yes no").waitFor();
  await row(page, "12 Not in the vendor list yes").waitFor();
  await panel(page).getByText("2 with consent, 1 with legitimate interest, of 40").click();
  await row(page, "4000 Not in the vendor list no yes").waitFor();
  await panel(page).getByText("2 Choose advertisements by what you see: not allowed for 2 vendors").click();
  await panel(page).getByText('<Angle> & "Quote" Media, 4000 (not in the vendor list)').waitFor();
  await panel(page).getByText("63 Not in the vendor list: legitimate interest required for 1 vendor").waitFor();
  const fields = await page.locator("#tc-fields dd, #tc-segments dd").allTextContents();
  assert.deepEqual([...fields.slice(0, 1), ...fields.slice(3)], ["2", "90", "471", "5", "DE", "AA", "3",
    "2", "yes", "no", "no", "767", "767", "1, 3", "none", "2", "2", "none", "6, 8", "none"]);
  await show({ text: "C", problem: "Core.Created, bit 6: it needs 36 bits, and 0 are left" });
  await panel(page).getByText("It cannot be decoded: Core.Created, bit 6").waitFor();
  assert.equal(await panel(page).getByRole("table").count(), 0);
});

for (const options of [{ width: 1280, height: 800 }, { width: 390, height: 844, colorScheme: "dark" }])
  test(`axe finds nothing at ${options.width} points, nothing runs out sideways`, async (t) => {
    const page = await openPanel(t, options);
    await expectSound(page, options.width);
    await accept(page);
    await panel(page).getByText("39 with consent").click();
    await row(page, "6 AdQuarry yes yes").waitFor();
    await expectSound(page, options.width);
    await tab(page).press("ArrowRight"); // around to the first, past no hidden one
    await page.getByRole("tab", { name: "Timeline", selected: true }).waitFor();
  });
