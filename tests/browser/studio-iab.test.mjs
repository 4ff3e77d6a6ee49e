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
  assert.equal(await page.getByRole("button", { name: "Open privacy center" }).count(), 0);

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
