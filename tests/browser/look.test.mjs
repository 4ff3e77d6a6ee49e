// What can be judged of the look: contrast, states that differ, and that nothing leaves the sheet.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { createRequire } from "node:module";
import { readFile } from "node:fs/promises";
import { closeBrowser, iabSample, iabScreens, open, sample, serve, vendorList } from "./browser.mjs";

after(closeBrowser);

const axe = await readFile(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

async function plain(file) {
  const { customisation, ...rest } = JSON.parse(await readFile(file, "utf8"));
  return rest;
}

async function expectClean(page, options, where) {
  await page.evaluate(axe); // through the debugger: the page's policy stays in force
  const { violations, passes } = await page.evaluate((chosen) => axe.run(chosen), options);
  assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map((n) => n.html)]), [], where);
  assert.ok(passes.some(({ id }) => id === "color-contrast"), where);
}

for (const [name, options] of [["light", {}], ["dark", { colorScheme: "dark" }],
  ["forced colours", { forcedColors: "active" }]])
  test(`axe finds nothing on any screen: ${name}`, async (t) => {
    for (const colours of ["plain", "themed"]) {
      const of = (file) => (colours === "plain" ? plain(file) : file);
      // Another colour changes nothing but contrast.
      const rules = name === "light" && colours === "plain" ? {} : { runOnly: ["color-contrast"] };
      const category = await open(t, await serve(t, await of(sample)), options);
      await expectClean(category, rules, `category, ${colours}`);
      const page = await open(t, await serve(t, await of(iabSample), "en", vendorList), options);
      for await (const screen of iabScreens(page)) {
        await page.mouse.move(0, 0);
        await expectClean(page, rules, `${screen}, ${colours}`);
        if (screen !== "vendors") continue;
        await page.locator("#search").fill("no such partner");
        await expectClean(page, rules, `search, ${colours}`);
      }
    }
  });

// Contrast of the edge of each kind of switch to the sheet, as WCAG defines it.
function edges() {
  const context = document.createElement("canvas").getContext("2d", { willReadFrequently: true });
  const luminance = (colour) => {
    context.fillStyle = colour;
    context.fillRect(0, 0, 1, 1);
    const [r, g, b] = [...context.getImageData(0, 0, 1, 1).data].map((byte) => {
      const part = byte / 255;
      return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const ground = luminance(getComputedStyle(document.querySelector(".sheet")).backgroundColor);
  return [...document.querySelectorAll(".switch")].map((control) => {
    const edge = luminance(getComputedStyle(control, "::before").borderTopColor);
    return (Math.max(edge, ground) + 0.05) / (Math.min(edge, ground) + 0.05);
  });
}

test("a switch has an edge, on or off, by day and night, and where its tint is the ground's", async (t) => {
  const pale = { ...await plain(sample),
    customisation: { content: { backgroundcolor: "#FFFFFF" }, button: { backgroundcolor: "#FFFFFF" } } };
  for (const configuration of [await plain(sample), sample, pale])
    for (const options of [{}, { colorScheme: "dark" }, { forcedColors: "active" }]) {
      const page = await open(t, await serve(t, configuration), options);
      await page.locator(".switch").nth(1).click();
      await page.mouse.move(0, 0);
      const found = await page.evaluate(edges);
      assert.ok(found.length > 5 && found.every((ratio) => ratio >= 3), `${found}`);
    }
});

test("with forced colours a switch that is on differs, and links are links", async (t) => {
  const page = await open(t, await serve(t, sample), { forcedColors: "active" });
  await page.locator(".switch").nth(1).click();
  const seen = await page.evaluate(() => {
    const slot = (index) =>
      getComputedStyle(document.querySelectorAll(".switch")[index], "::before").backgroundColor;
    const probe = document.body.appendChild(document.createElement("p"));
    probe.style.color = "LinkText";
    return { off: slot(1), on: slot(4), link: getComputedStyle(document.querySelector(".leaves")).color,
      linkText: getComputedStyle(probe).color };
  });
  assert.notEqual(seen.off, seen.on);
  assert.equal(seen.link, seen.linkText);
});

test("a line shows where the list is cut, and motion rests where that is wanted", async (t) => {
  const page = await open(t, await serve(t, sample)); // which asks for reduced motion
  const cuts = () => page.evaluate(() => {
    const style = getComputedStyle(document.querySelector(".scroll"));
    return ["--cut-above", "--cut-below"].map((name) => !/ 0\)|transparent/.test(style.getPropertyValue(name)));
  });
  const scrollTo = (top) => page.evaluate(async (y) => {
    document.querySelector(".scroll").scrollTo(0, y);
    await new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)));
  }, top);
  for (const [top, expected] of [[0, [false, true]], [300, [true, true]], [1e6, [true, false]]]) {
    await scrollTo(top);
    assert.deepEqual(await cuts(), expected, `at ${top}`);
  }
  assert.equal(await page.locator(".switch").first().evaluate(
    (element) => getComputedStyle(element, "::after").transitionDuration), "0s");
});
