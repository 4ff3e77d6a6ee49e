// screenshots.mjs DIRECTORY: the pictures of docs/, of the sample configuration: category-center-light,
// -dark and, with the colours that it sets, -themed.
import { readFile } from "node:fs/promises";
import { test, after } from "node:test";
import { closeBrowser, open, sample, serve } from "./browser.mjs";

after(closeBrowser);

const themed = JSON.parse(await readFile(sample, "utf8"));
const { customisation, ...plain } = themed;
const directory = process.argv[2];

for (const [name, configuration, colorScheme] of [
  ["light", plain, "light"], ["dark", plain, "dark"], ["themed", themed, "light"]])
  test(name, async (t) => {
    const page = await open(t, await serve(t, configuration), { colorScheme, deviceScaleFactor: 2 });
    for (const title of ["Performance and crash reports", "Local news"])
      await page.getByRole("switch", { name: title, exact: true }).click();
    await page.waitForFunction(() => !document.querySelector(".switch").checked);
    await page.evaluate(() => document.querySelector(".scroll").scrollTo(0, 0));
    await page.mouse.move(0, 0);
    await page.evaluate(() => Promise.all(document.getAnimations()
      .filter(({ timeline }) => timeline === document.timeline).map((each) => each.finished)));
    await page.screenshot({ path: `${directory}/category-center-${name}.png` });
  });
