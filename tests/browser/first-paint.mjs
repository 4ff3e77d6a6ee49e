// first-paint.mjs: how long Chromium takes from navigation to the first paint of a screen with 300
// rows, what the answer, parsing, style, layout and script have of it until then, and what a page with
// one letter takes. Medians of 15 visits each, in turns.
import { test, after } from "node:test";
import { once } from "node:events";
import { createServer } from "node:http";
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
  const [paint, answered, parsed] = await page.evaluate(() => {
    const { responseEnd, domInteractive } = performance.getEntriesByType("navigation")[0];
    const { startTime } = performance.getEntriesByName("first-contentful-paint")[0];
    return [startTime, responseEnd, domInteractive];
  });
  const { metrics } = await session.send("Performance.getMetrics");
  await page.context().close(); // what is open takes time from the next visit
  const took = (name) => 1000 * metrics.find((metric) => metric.name === name).value;
  return { "first paint": paint, answered, parsed, style: took("RecalcStyleDuration"),
    layout: took("LayoutDuration"), script: took("ScriptDuration") };
}

test("first paint", async (t) => {
  const letter = createServer((request, response) => {
    response.setHeader("Content-Type", "text/html");
    response.end("<!doctype html><title>One letter</title><p>a");
  }).listen(0, "127.0.0.1");
  t.after(() => letter.close());
  await once(letter, "listening");
  const pages = { "300 rows": await serve(t, configuration),
    "one letter": `http://127.0.0.1:${letter.address().port}/` };
  const visits = { "300 rows": [], "one letter": [] };
  for (let i = 0; i < 15; ++i)
    for (const name of Object.keys(pages)) visits[name].push(await visit(t, pages[name]));
  for (const [name, all] of Object.entries(visits))
    for (const what of Object.keys(all[0]))
      console.log(`${name}, ${what}: ${median(all.map((one) => one[what])).toFixed(1)} ms`);
});
