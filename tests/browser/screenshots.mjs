// screenshots.mjs DIRECTORY: the pictures of docs/, of the sample configurations: category-center-light,
// -dark and, with the colours that it sets, -themed; iab- and the name of each of the IAB center's screens,
// and some of them -searched, -french, -dark and -themed.
import { readFile } from "node:fs/promises";
import { test, after } from "node:test";
import { fileURLToPath } from "node:url";
import { closeBrowser, iabSample, iabScreens, open, sample, serve, tap, vendorList } from "./browser.mjs";

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
