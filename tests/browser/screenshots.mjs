// screenshots.mjs DIRECTORY: the pictures of docs/, of the sample configurations: category-center-light,
// -dark and, with the colours that it sets, -themed; iab- and the name of each of the IAB center's screens,
// and some of them -searched, -french, -dark, -themed and -in-force; studio, studio-findings and studio-iab.
import { readFile } from "node:fs/promises";
import { test, after } from "node:test";
import { fileURLToPath } from "node:url";
import { closeBrowser, iabSample, iabScreens, listOfFormat3, open, sample, serve, switchOf, tap, vendorList } from "./browser.mjs";
import { openStudio } from "./studio.mjs";

after(closeBrowser);

const themed = JSON.parse(await readFile(sample, "utf8"));
const { customisation, ...plain } = themed;
const directory = process.argv[2];

async function picture(page, name) {
  await page.mouse.move(0, 0);
  await page.evaluate(() => Promise.all(document.getAnimations()
    .filter(({ timeline }) => timeline === document.timeline).map((each) => each.finished)));
  await page.screenshot({ path: `${directory}/${name}.png` });
}

for (const [name, configuration, colorScheme] of [
  ["light", plain, "light"], ["dark", plain, "dark"], ["themed", themed, "light"]])
  test(name, async (t) => {
    const page = await open(t, await serve(t, configuration), { colorScheme, deviceScaleFactor: 2 });
    for (const title of ["Performance and crash reports", "Local news"])
      await page.getByRole("switch", { name: title, exact: true }).click();
    await page.waitForFunction(() => !document.querySelector(".switch").checked);
    await page.evaluate(() => document.querySelector(".scroll").scrollTo(0, 0));
    await picture(page, `category-center-${name}`);
  });

const iab = JSON.parse(await readFile(iabSample, "utf8"));
const { customisation: colours, ...plainIAB } = iab;
const french = fileURLToPath(new URL("../../samples/gvl/purposes-fr.json", import.meta.url));

test("the IAB center", async (t) => {
  const page = await open(t, await serve(t, plainIAB, "en", vendorList), { deviceScaleFactor: 2 });
  for await (const screen of iabScreens(page)) {
    if (screen === "purposes") await tap(page, page.getByRole("switch").first());
    await picture(page, `iab-${screen.replace(" ", "-")}`);
    if (screen !== "vendors") continue;
    await page.getByRole("searchbox").fill("media");
    await picture(page, "iab-vendors-searched");
    await page.getByRole("searchbox").fill("");
  }
});

for (const [name, configuration, language, wanted, options] of [
  ["french", plainIAB, "fr", "popup", {}], ["dark", plainIAB, "en", "purposes", { colorScheme: "dark" }],
  ["themed", iab, "en", "vendors", {}]])
  test(`the IAB center, ${name}`, async (t) => {
    const lists = language === "fr" ? [vendorList, french] : [vendorList];
    const page = await open(t, await serve(t, configuration, language, ...lists), { deviceScaleFactor: 2, ...options });
    for await (const screen of iabScreens(page)) {
      if (screen !== wanted) continue;
      if (screen !== "popup") await tap(page, page.getByRole("switch").first());
      return picture(page, `iab-${screen}-${name}`);
    }
  });

test("the IAB center with the framework in force", async (t) => {
  const page = await open(t, await serve(t, plainIAB, "en", listOfFormat3), { deviceScaleFactor: 2 });
  for await (const screen of iabScreens(page)) {
    if (screen !== "vendor details") continue;
    await page.locator(".scroll").evaluate((list) => list.scrollTo(0, list.scrollHeight));
    await picture(page, "iab-vendor-details-in-force");
  }
});

const desk = { width: 1440, height: 900 };

test("the studio with the privacy center", async (t) => {
  const page = await openStudio(t, desk);
  await page.getByRole("button", { name: "Accept all" }).click();
  await page.locator("#permanent-data [data-key]").nth(10).waitFor();
  await page.getByRole("button", { name: "Open privacy center" }).click();
  const center = page.frameLocator("#center iframe");
  for (const title of ["Performance and crash reports", "Local news"]) await switchOf(center, title).click();
  await page.getByText("Local news switched off").waitFor();
  await center.locator(".scroll").evaluate((list) => list.scrollTo(0, 0));
  await picture(page, "studio");
});

test("the studio's findings", async (t) => {
  const page = await openStudio(t, { ...desk, colorScheme: "dark" });
  await page.getByRole("tab", { name: /^Configuration/ }).click();
  const editor = page.locator("#editor");
  await editor.fill((await editor.inputValue()).replace('"ID": "22"', '"ID": "21"')
    .replace("https://harbourweekly.example/privacy\"", "harbourweekly.example/privacy\""));
  await page.locator("#findings li").nth(1).waitFor();
  await editor.evaluate((field) => { field.setSelectionRange(0, 0); field.scrollTop = 0; field.scrollLeft = 0; });
  await picture(page, "studio-findings");
});

test("the studio's TC string", async (t) => {
  const page = await openStudio(t, desk, ["--iab"]);
  await page.getByRole("tab", { name: /^Configuration/ }).click();
  await page.getByLabel("Name the list\u2019s vendors").check();
  await page.getByRole("button", { name: "Publish\u2026" }).click();
  await page.getByRole("button", { name: "Publish and relaunch" }).click();
  await page.getByText("Running, launch 2").waitFor();
  await page.getByText("Version 2 is published.").waitFor();
  await page.locator("#come-back").waitFor({ state: "hidden" });
  await page.getByRole("tab", { name: "TC string" }).click();
  await page.getByRole("button", { name: "Accept all" }).click();
  await page.getByText("39 with consent").waitFor();
  await picture(page, "studio-iab");
});
