// screenshots.mjs DIRECTORY: the pictures of docs/, of the sample configurations: category-center-light,
// -dark and, with the colours that it sets, -themed; iab-popup, -purposes and -vendors.
import { readFile } from "node:fs/promises";
import { test, after } from "node:test";
import { closeBrowser, iabSample, open, sample, serve, tap, vendorList } from "./browser.mjs";

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

test("the IAB center", async (t) => {
  const page = await open(t, await serve(t, iabSample, "en", vendorList), { deviceScaleFactor: 2 });
  await picture(page, "iab-popup");
  await tap(page, page.getByRole("button", { name: "Details" }));
  await tap(page, page.getByRole("switch").first());
  await picture(page, "iab-purposes");
  await tap(page, page.getByRole("button", { name: "Partners", exact: true }));
  await tap(page, page.getByRole("button", { name: /^Details/ }).nth(1));
  await picture(page, "iab-vendors");
});
