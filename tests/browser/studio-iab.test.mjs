import { after, test } from "node:test";
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { readFile } from "node:fs/promises";
import { TCString } from "../tcf/node_modules/@iabtechlabtcf/core/lib/mjs/index.js";
import { Codec } from "../tcf/codec.mjs";
import { closeBrowser, expectStates, listOfFormat3 } from "./browser.mjs";
import { expectSameWhenOpened, expectSound, failuresButRefusals, happened, openStudio, showColumn } from "./studio.mjs";
import * as webview from "./webview.mjs";

after(closeBrowser);

const tab = (page) => page.getByRole("tab", { name: "TC string" });
const panel = (page) => page.getByRole("tabpanel", { name: "TC string" });
const row = (page, name) => panel(page).getByRole("row", { name });

// The panel of a studio in IAB mode, when the vendor list is in force.
async function openPanel(t, options) {
  const page = await openStudio(t, options, ["--iab"]);
  await showColumn(page, "Timeline and configuration");
  await tab(page).click();
  await panel(page).getByText("Vendor list version 3, 39 vendors and 3 deleted.").waitFor();
  return page;
}

const accept = (page) => page.getByRole("button", { name: "Accept all" }).click();

const publish = async (page, launch) => {
  await page.getByRole("button", { name: "Publish\u2026" }).click();
  await page.getByRole("button", { name: "Publish and relaunch" }).click();
  await page.getByText(`Running, launch ${launch}`).waitFor();
};

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
  await page.getByText("1 warning").waitFor(); // it names none
  await page.getByLabel("Name the list\u2019s vendors").check();
  await page.getByText("Nothing to mend").waitFor();
  await publish(page, 2);
  await happened(page, /downloaded, version 2/);
  await accept(page);
  await tab(page).click();
  await row(page, "1 Keep and read information on this device yes no").waitFor();
  await row(page, "10 Improve products yes yes").waitFor();
  await row(page, "1 Use your exact location yes").waitFor();
  assert.deepEqual(page.failures, []);
});

test("vendors are named one by one, and taken back", async (t) => {
  const page = await openPanel(t);
  await page.getByRole("tab", { name: /^Configuration/ }).click();
  const vendor = page.getByLabel("Vendor to name");
  for (const text of ["6 AdQuarry", "72"]) {
    await vendor.fill(text);
    await vendor.press("Enter");
  }
  await page.getByRole("button", { name: "Do not name 72 Kestrel DSP" }).waitFor();
  assert.equal(JSON.parse(await page.locator("#editor").inputValue()).information.vendors, "6,72");
  await page.getByRole("button", { name: "Do not name 6 AdQuarry" }).click();
  await publish(page, 2);
  await happened(page, /downloaded, version 2/);
  await accept(page);
  await tab(page).click();
  await panel(page).getByText("1 with consent, 1 with legitimate interest, of 39").waitFor();
  assert.deepEqual(page.failures, []);
});

const changes = (page) => panel(page).getByRole("region", { name: "Changed by the last save" });

test("the panel says what a save changed", async (t) => {
  const page = await openPanel(t);
  await accept(page);
  await panel(page).getByText("39 with consent").waitFor();
  assert.equal(await changes(page).count(), 0); // there is none before it
  await page.getByLabel("Publisher TC segment").click();
  await page.getByLabel("Language").selectOption({ label: "German (Deutsch)" });
  await happened(page, /purposes-de was downloaded/);
  await page.getByLabel("First screen").selectOption("Purposes");
  await page.getByRole("button", { name: "Open privacy center" }).click();
  await center(page).getByRole("switch", { name: /^Werbung messen/ }).click();
  await center(page).getByRole("button", { name: "Auswahl speichern" }).click();
  await changes(page).waitFor();
  const shown = (await changes(page).getByRole("listitem").allInnerTexts()).map((text) => text.split("\n")[0]);
  // Both saves may lie in one second.
  assert.deepEqual(shown.filter((text) => !text.startsWith("+") && text !== "Last updated"), ["Purposes, consent",
    "Purposes, legitimate interest", "Publisher\u2019s purposes, consent",
    "Publisher\u2019s purposes, legitimate interest", "Consent language", "Publisher country",
    "Publisher TC segment"]);
  await changes(page).getByText("+ 7 Measure advertisements").nth(3).waitFor();
  await changes(page).getByText("EN \u2192 DE").nth(1).waitFor();

  await page.getByRole("button", { name: "Refuse all" }).click();
  await changes(page).getByText("\u2212 6 AdQuarry").nth(1).waitFor();
  await changes(page).getByText("\u2212 27 more").first().click();
  await changes(page).getByText('\u2212 767 <Angle> & "Quote" Media').first().waitFor();

  await page.getByRole("button", { name: "Relaunch" }).click();
  await page.getByText("Running, launch 2").waitFor();
  await page.getByRole("tab", { name: "Compare" }).click();
  const compare = page.getByRole("tabpanel", { name: "Compare" });
  const accepted = (await happened(page, "PRIVACY_VEN_1011", "sdk"))[0];
  await compare.getByLabel("From").selectOption(String(accepted.id));
  await compare.getByRole("row", { name: "PRIVACY_CONSENT 1 0" }).waitFor();
  await compare.getByRole("group", { name: "Permanent data" }).getByRole("row", { name: /^PRIVACY_VEN_1011 ?AdQuarry: consent 1 0$/ }).waitFor();
  await compare.getByRole("group", { name: "TC string" }).getByText("\u2212 6 AdQuarry").nth(1).waitFor();
  await compare.getByLabel("From").selectOption({ label: "The beginning" });
  await compare.getByRole("row", { name: "PRIVACY_CONSENT none 0" }).waitFor();
  await compare.getByLabel("From").selectOption({ index: await compare.getByLabel("From").locator("option").count() - 1 });
  await compare.getByText("Nothing differs.").waitFor();
  await expectSameWhenOpened(page);
  assert.deepEqual(failuresButRefusals(page), []);
});

test("restrictions are written by name, ship, and stand in the next string", async (t) => {
  const page = await openPanel(t);
  const restrictions = page.getByRole("tabpanel", { name: "Restrictions" });
  await page.getByRole("tab", { name: "Restrictions" }).click();
  await restrictions.getByText("The application ships none.").waitFor();
  for (const [purpose, vendor, type] of [["2", "6 AdQuarry", "not allowed"], ["7", "4000", "consent required"]]) {
    await restrictions.getByLabel("Purpose").selectOption(purpose);
    await restrictions.getByLabel("Vendor").fill(vendor);
    await restrictions.getByRole("combobox", { name: "Type" }).selectOption(type);
    await restrictions.getByRole("button", { name: "Add", exact: true }).click();
  }
  await restrictions.getByText("7 Measure advertisements: consent required for 4000 (not in the vendor list)").waitFor();
  const text = restrictions.getByLabel("VXIABPublisherRestrictions.json");
  await text.fill((await text.inputValue()).replace('"4000": 1', '"4000": 1, "6": 9'));
  await restrictions.getByText("no type is 9 for 6 AdQuarry").waitFor();
  await restrictions.getByRole("button", { name: /^Remove 7 .* 6 AdQuarry$/ }).click();
  await text.fill(`${await text.inputValue()}]`);
  assert.equal(await restrictions.getByRole("button", { name: "Ship and relaunch" }).isDisabled(), true);
  await text.fill((await text.inputValue()).slice(0, -1));
  await restrictions.getByRole("button", { name: "Ship and relaunch" }).click();
  await restrictions.getByText("This ships with the application").waitFor();
  await accept(page);
  await tab(page).click();
  await panel(page).getByText("2 Choose advertisements by what you see: not allowed for 1 vendor").waitFor();
  await page.reload();
  await page.getByRole("tab", { name: "Restrictions" }).click();
  await restrictions.getByRole("listitem").nth(1).waitFor();
  assert.deepEqual(page.failures, []);
});

const stateOf = async (page) =>
  (await (await page.request.get(new URL("api/state", page.url()).href)).json()).application;
const center = (page) => page.frameLocator("#center iframe");
const idsOf = (vector) => [...vector].filter(([, value]) => value).map(([id]) => id);

test("with the framework in force the string says whom the user was shown, and is valid", async (t) => {
  const page = await openPanel(t);
  await page.getByRole("switch", { name: /^Framework in force/ }).click();
  await page.getByText("Running, launch 2").waitFor();
  while ((await happened(page, "vendor-list was downloaded")).length < 2); // the first was of format 2
  await page.getByLabel("First screen").selectOption("Partners");
  await page.getByRole("button", { name: "Open privacy center" }).click();
  await center(page).getByRole("button", { name: "Details AdQuarry", exact: true }).click();
  for (const text of ["- Network address", "- In general: 30", "- Build a profile for advertising: 180"])
    await center(page).getByRole("listitem").getByText(text, { exact: true }).waitFor();
  for (const path of ["privacy", "legitimate-interest", "device-storage.json"])
    await center(page).getByText(`https://adquarry.example/${path}`).waitFor();
  await expectSound(page, 1280);
  const codec = new Codec();
  t.after(() => codec.close());
  const toldOf = async (event) =>
    codec.ask({ event, store: Object.fromEntries((await stateOf(page)).store) });
  const { page: article } = await webview.webView(t, (await toldOf("cmpuishown")).script);
  await webview.call(article, "addEventListener", 2);
  await center(page).getByRole("switch", { name: "AdQuarry: Consent", exact: true }).click();
  await center(page).getByRole("button", { name: "Purposes" }).click();
  for (const purpose of ["Keep and read information on this device", "Choose articles and videos by what you see"])
    await center(page).getByRole("switch", { name: `${purpose}: Consent`, exact: true }).click();
  await center(page).getByRole("button", { name: "Save my choices" }).click();
  await panel(page).getByText("1 with consent, 2 with legitimate interest, of 39").waitFor();

  const store = Object.fromEntries((await stateOf(page)).store);
  const checked = spawnSync(process.env.VXPRIVACY, ["tc", "check", store.IABTCF_TCString, "--gvl", listOfFormat3],
    { encoding: "utf8" });
  assert.equal(checked.status, 0, checked.stdout + checked.stderr);
  const model = TCString.decode(store.IABTCF_TCString);
  assert.deepEqual([idsOf(model.purposeConsents), idsOf(model.purposeLegitimateInterests)], [[1, 11], [11]]);
  // The second has special purposes alone.
  assert.deepEqual([idsOf(model.vendorConsents), idsOf(model.vendorLegitimateInterests)], [[6], [6, 42]]);
  const { vendors } = JSON.parse(await readFile(listOfFormat3, "utf8"));
  const shown = Object.values(vendors).filter((vendor) => !vendor.deletedDate).map(({ id }) => id);
  assert.deepEqual(idsOf(model.vendorsDisclosed), shown);
  assert.deepEqual([...store.IABTCF_DisclosedVendors].flatMap((bit, index) => (bit === "1" ? [index + 1] : [])), shown);

  await article.evaluate((await toldOf("useractioncomplete")).update);
  const [[before], [heard]] = (await webview.heard(article))[0];
  assert.deepEqual([before.eventStatus, before.tcString], ["cmpuishown", ""]);
  assert.deepEqual([heard.eventStatus, heard.tcString], ["useractioncomplete", store.IABTCF_TCString]);
  assert.deepEqual(webview.idsOf(heard.vendor.disclosedVendors), shown);

  await page.getByRole("switch", { name: /^Framework in force/ }).click();
  await page.getByText("Running, launch 3").waitFor();
  await page.getByRole("button", { name: "Refuse all" }).click();
  await panel(page).getByText("0 with consent, 0 with legitimate interest, of 39").waitFor();
  const specified = Object.fromEntries((await stateOf(page)).store);
  assert.deepEqual([TCString.decode(specified.IABTCF_TCString).policyVersion, specified.IABTCF_DisclosedVendors], [2, undefined]);
  await expectSameWhenOpened(page);
  assert.deepEqual(failuresButRefusals(page), []);
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

const entriesOf = ({ store }) => store.filter(([key]) => key !== "VXSDKIdentifier"); // which a beacon makes

// Opens the center without network, so that beacons wait, and kills the application there.
async function killWhile(page, screen, doSomething) {
  const network = page.getByRole("switch", { name: "Network" });
  await network.click();
  await page.getByText("Connections are refused.").waitFor();
  const before = await stateOf(page);
  await page.getByLabel("First screen").selectOption(screen);
  await page.getByRole("button", { name: "Open privacy center" }).click();
  await doSomething(center(page));
  await page.getByRole("button", { name: "Kill hard" }).click();
  await page.locator("#center iframe").waitFor({ state: "detached" });
  await page.getByText("Running, launch 2").waitFor();
  const after = await stateOf(page);
  assert.deepEqual(entriesOf(after), entriesOf(before));
  assert.deepEqual(after.decision, before.decision);
  assert.equal(after.waitingBeacons, 1);
  await network.click();
  await page.getByRole("button", { name: "+1 day" }).click(); // a request that failed thrice waits for hours
  await happened(page, /privacy_action[\\": ]+V/, "beacon");
  assert.deepEqual(failuresButRefusals(page), []);
}

test("killed with the popup open, the application still asks", async (t) => {
  const page = await openPanel(t);
  await killWhile(page, "Popup", (screen) => screen.getByRole("button", { name: "Refuse all" }).waitFor());
  await page.getByText("First start: no choice was ever made.").waitFor();
  await expectSameWhenOpened(page);
});

test("killed with the vendors half edited, the application keeps what was saved", async (t) => {
  const page = await openPanel(t);
  await page.getByRole("button", { name: "Refuse all" }).click();
  await page.getByText("Consent refused").waitFor();
  await happened(page, "", "beacon");
  await killWhile(page, "Partners", async (screen) => {
    await screen.getByRole("button", { name: "Details AdQuarry", exact: true }).click();
    for (const name of ["AdQuarry: Consent", "Kestrel DSP: Consent"])
      await screen.getByRole("switch", { name, exact: true }).click();
    await happened(page, "Kestrel DSP switched on");
  });
  await page.getByRole("button", { name: "Open privacy center" }).click();
  await expectStates(center(page), { "AdQuarry: Consent": false, "Kestrel DSP: Consent": false });
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
  const show = async (tcString) => { // a studio that says this and nothing else
    Object.assign(state.application, { tcString });
    const body = `event: state\ndata: ${JSON.stringify(state)}\n\n`;
    await page.route("**/api/state", (route) => route.fulfill({ json: state }));
    await page.route("**/api/events?*", (route) => route.fulfill({ contentType: "text/event-stream", body }));
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
    await showColumn(page, "Application");
    await accept(page);
    await showColumn(page, "Timeline and configuration");
    await panel(page).getByText("39 with consent").click();
    await row(page, "6 AdQuarry yes yes").waitFor();
    await expectSound(page, options.width);
    await tab(page).press("ArrowRight");
    await page.getByLabel("Vendor", { exact: true }).fill("6");
    await page.getByRole("button", { name: "Add", exact: true }).click();
    await page.getByRole("button", { name: /^Remove/ }).waitFor();
    await expectSound(page, options.width);
    await page.getByRole("tab", { name: "Compare" }).click();
    await page.getByRole("tabpanel", { name: "Compare" }).getByRole("row").nth(40).waitFor();
    await expectSound(page, options.width);
    await page.getByRole("tab", { name: "Restrictions" }).press("ArrowRight"); // around to the first
    await page.getByRole("tab", { name: "Timeline", selected: true }).waitFor();
  });
