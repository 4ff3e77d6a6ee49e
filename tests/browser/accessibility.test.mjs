import { after, test } from "node:test";
import assert from "node:assert/strict";
import { createRequire } from "node:module";
import { readFile } from "node:fs/promises";
import { closeBrowser, french, open, sample, serve } from "./browser.mjs";

after(closeBrowser);

const axe = await readFile(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

for (const [name, file, language] of [["sample", sample, "en"], ["french", french, "fr"]])
  for (const colorScheme of ["light", "dark"])
    test(`axe finds nothing: ${name}, ${colorScheme}`, async (t) => {
      const page = await open(t, await serve(t, file, language), { colorScheme });
      await page.evaluate(axe); // through the debugger: the page's policy stays in force
      const { violations, passes } = await page.evaluate("axe.run()");
      assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map((n) => n.html)]), []);
      assert.ok(passes.some(({ id }) => id === "color-contrast"));
    });

test("a dark page shows only where the configuration sets no colours", async (t) => {
  for (const [file, ground] of [[french, "rgb(20, 28, 35)"], [sample, "rgb(251, 250, 247)"]]) {
    const page = await open(t, await serve(t, file), { colorScheme: "dark" });
    const seen = await page.locator(".scroll").evaluate((element) => {
      while (getComputedStyle(element).backgroundColor === "rgba(0, 0, 0, 0)")
        element = element.parentElement;
      return getComputedStyle(element).backgroundColor;
    });
    assert.equal(seen, ground);
  }
});

test("a switch is called by its row's title, a link says that it leaves", async (t) => {
  const page = await open(t, await serve(t, sample));
  const control = page.getByRole("switch", { name: "Audience measurement", exact: true });
  assert.equal(await control.count(), 1);
  const description = await control.evaluate((element) =>
    document.getElementById(element.getAttribute("aria-describedby")).textContent);
  assert.match(description, /^Helps us understand/);
  for (const each of await page.getByRole("switch").all())
    assert.ok(await each.getAttribute("aria-describedby"));
  assert.equal(
    await page.getByRole("link", { name: "How we measure (opens outside this page)" }).count(), 1);
});

test("the keyboard reaches everything in the order in which it is seen, visibly", async (t) => {
  const page = await open(t, await serve(t, sample));
  const operable = await page.locator("button, input").count();
  let previous = -Infinity;
  for (let i = 0; i < operable; ++i) {
    await page.keyboard.press("Tab");
    const { top, outline } = await page.evaluate(() => {
      const element = document.activeElement;
      const scrolled = document.querySelector(".scroll").scrollTop;
      return { top: element.getBoundingClientRect().top + scrolled,
        outline: getComputedStyle(element).outlineStyle };
    });
    assert.ok(top > previous);
    assert.notEqual(outline, "none");
    previous = top;
  }
});
