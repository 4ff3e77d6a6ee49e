// first-paint.mjs: how long Chromium takes from navigation to the first paint of a screen with 300
// rows, and what style, layout and script have of it until then. Medians of 15 visits.
import { test, after } from "node:test";
import { closeBrowser, open, serve } from "./browser.mjs";

after(closeBrowser);

const row = (ID, subcategories) => ({ ID: String(ID), name: `Purpose ${ID}`, subcategories,
  description: "What is done for this purpose, in a sentence of common length." });
const configuration = {
  information: { version: 1, content: "You decide." },
  global_consent: { name: "All", description: "All of them" },
  categories: Array.from({ length: 60 }, (_, i) =>
    row(10 * (i + 1), [1, 2, 3, 4].map((child) => row(10 * (i + 1) + child)))),
};

const median = (numbers) => numbers.sort((a, b) => a - b)[numbers.length >> 1];

async function visit(t, address) {
  const page = await open(t, "about:blank");
  const session = await page.context().newCDPSession(page);
  await session.send("Performance.enable");
  await page.goto(address);
  await page.waitForFunction(() => performance.getEntriesByName("first-contentful-paint").length);
  const paint = await page.evaluate(() =>
    performance.getEntriesByName("first-contentful-paint")[0].startTime);
  const { metrics } = await session.send("Performance.getMetrics");
  const took = (name) => 1000 * metrics.find((metric) => metric.name === name).value;
  return { "first paint": paint, style: took("RecalcStyleDuration"),
    layout: took("LayoutDuration"), script: took("ScriptDuration") };
}

test("first paint", async (t) => {
  const address = await serve(t, configuration);
  const visits = [];
  for (let i = 0; i < 15; ++i) visits.push(await visit(t, address));
  for (const what of Object.keys(visits[0]))
    console.log(`${what}: ${median(visits.map((one) => one[what])).toFixed(1)} ms`);
});
