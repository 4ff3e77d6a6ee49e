import { after, test } from "node:test";
import assert from "node:assert/strict";
import { createRequire } from "node:module";
import { readFile } from "node:fs/promises";
import { fileURLToPath } from "node:url";
import { closeBrowser, french, iabSample, open, sample, serve, switchOf, tap } from "./browser.mjs";

after(closeBrowser);

const axe = await readFile(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

async function check(page) {
  await page.evaluate(axe); // through the debugger: the page's policy stays in force
  const result = await page.evaluate("axe.run()");
  assert.deepEqual(result.violations.map(({ id, nodes }) => [id, nodes.map((n) => n.html)]), []);
  return result;
}

for (const [name, file, language] of [["sample", sample, "en"], ["french", french, "fr"]])
  for (const colorScheme of ["light", "dark"])
    test(`axe finds nothing: ${name}, ${colorScheme}`, async (t) => {
      const page = await open(t, await serve(t, file, language), { colorScheme });
      const { passes } = await check(page);
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

const textsOf = (control, attribute) => control.evaluate((element, name) =>
  element.getAttribute(name).split(" ").map((id) => document.getElementById(id).textContent), attribute);

test("a switch is called by its row's title, a link by its own and that, and says that it leaves", async (t) => {
  const page = await open(t, await serve(t, sample));
  const control = switchOf(page, "Audience measurement");
  const [count, description] = await textsOf(control, "aria-describedby");
  assert.equal(count, "2 of 2 on");
  assert.match(description, /^Helps us understand/);
  for (const each of await page.getByRole("switch").all())
    assert.ok(await each.getAttribute("aria-describedby"));
  assert.equal(await page.getByRole("link", { exact: true,
    name: "How we measure (opens outside this page) Audience measurement" }).count(), 1);
});

test("headings have levels, subcategories are a list in their category's group", async (t) => {
  const page = await open(t, await serve(t, sample));
  const named = (role, name, rest) => page.getByRole(role, { name, exact: true, ...rest });
  assert.equal(await page.getByRole("heading", { level: 1 }).count(), 1);
  for (const [name, level] of [["All purposes", 2], ["Audience measurement", 2],
    ["Readership statistics", 3]])
    assert.equal(await named("heading", name, { level }).count(), 1, name);
  const group = named("group", "Audience measurement");
  const items = group.getByRole("list", { name: "Audience measurement" }).getByRole("listitem");
  assert.equal(await items.count(), 2);
  assert.equal(await items.getByRole("switch").count(), 2);
  assert.equal(await group.getByRole("switch").count(), 3);
  assert.equal(await page.getByRole("listitem").count(), await page.getByRole("heading", { level: 3 }).count());
});

test("a parent shows and tells how many of its children are on", async (t) => {
  const page = await open(t, await serve(t, sample));
  await tap(page, switchOf(page, "Readership statistics"));
  const control = switchOf(page, "Audience measurement");
  await page.getByText("1 of 2 on", { exact: true }).waitFor();
  const said = page.getByRole("status");
  assert.equal(await said.textContent(), "Audience measurement: 1 of 2 on");
  assert.equal((await textsOf(control, "aria-describedby"))[0], "1 of 2 on");
  assert.equal(await control.isChecked(), true);
  await tap(page, switchOf(page, "All purposes")); // it was off: now all are on
  await page.getByText("All purposes: 11 of 11 on").waitFor({ state: "attached" });
  assert.equal((await textsOf(control, "aria-describedby"))[0], "2 of 2 on");
});

test("equal links and rows without a name can be told apart, and text alone can be scrolled by keyboard", async (t) => {
  const link = { privacy_policy_url: "https://example.com/", privacy_policy_text: "Privacy policy" };
  const row = (ID, name, rest) => ({ ID: String(ID), name, ...rest });
  const page = await open(t, await serve(t, { information: { version: 1, content: "You decide." },
    categories: [row(1, "Ads", { ...link, subcategories: [row(2, ""), row(3, "", { description: "Why." })] }),
      row(4, "Counts", link), row(5, undefined)] }));
  for (const name of ["Ads", "Counts"])
    assert.equal(await page.getByRole("link", { name: `Privacy policy (opens outside this page) ${name}`, exact: true }).count(), 1);
  const names = await page.getByRole("switch").evaluateAll((all) => all.map((one) =>
    one.getAttribute("aria-labelledby").split(" ").map((id) => document.getElementById(id).textContent).join(" ")));
  assert.deepEqual(names, ["2 of 2 onAds", "2 of 2 onAds", "Why.", "Counts", "Privacy settings"]);
  await check(page);
  const text = await open(t, await serve(t, { information: { version: 1, content: "You decide. ".repeat(500) } }));
  await check(text);
  await text.keyboard.press("Tab");
  await text.keyboard.press("End");
  await text.waitForFunction(() => document.querySelector(".scroll").scrollTop > 100);
});

test("the keyboard reaches everything in the order in which it is seen, visibly", async (t) => {
  const page = await open(t, await serve(t, sample));
  const operable = await page.locator(".screen :is(button, input)").count();
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

test("answers that are not enabled yet say why, and wake when enough was seen or the page fits", async (t) => {
  const lists = fileURLToPath(new URL("../../samples/gvl/vendor-list.json", import.meta.url));
  const address = await serve(t, iabSample, "en", lists);
  const page = await open(t, address, { height: 500 });
  const answer = page.locator(".answer[aria-disabled]").first();
  await answer.waitFor();
  const [why] = await textsOf(answer, "aria-describedby");
  assert.equal(why, "Read to the end to refuse or accept.");
  const hint = page.getByText(why, { exact: true });
  const woken = page.locator(".hint").getByText("You can now refuse or accept.");
  const bar = await page.locator(".bar").boundingBox();
  assert.ok((await hint.boundingBox()).y >= bar.y + bar.height, "below the answers");
  assert.equal(await woken.isVisible(), false);
  await answer.focus();
  assert.equal(await answer.evaluate((element) => element === document.activeElement), true);
  await page.locator(".scroll").evaluate((scroll) => scroll.scrollTo(0, scroll.scrollHeight));
  await answer.waitFor({ state: "detached" });
  await page.getByRole("status").getByText("You can now refuse or accept.").waitFor({ state: "attached" });
  await woken.waitFor();
  assert.equal(await hint.isVisible(), false);
  assert.deepEqual(await page.locator(".bar").boundingBox(), bar, "nothing moves");
  await tap(page, page.getByRole("button", { name: "Details" }));
  assert.equal(await page.locator(".hint").first().isVisible(), false);
  const tall = await open(t, await serve(t, iabSample, "en", lists), { height: 4000 });
  await tall.locator(".answer").first().waitFor();
  await tall.locator(".answer[aria-disabled]").first().waitFor({ state: "detached" });
  assert.equal(await tall.locator(".hint").first().isVisible(), false, "there was nothing to wait for");
});
