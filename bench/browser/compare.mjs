// compare.mjs [ROUNDS]: the screens in Chromium against pages written by hand, and klaro's list where
// KLARO names its script; README.md says how to run it. Prints a table of medians.
import { existsSync } from "node:fs";
import { closeBrowser, iabSample, serve, vendorList } from "../../tests/browser/browser.mjs";
import { categoryPage, klaroPage, serveText, vendorPage } from "./pages.mjs";
import { inTurns } from "./rounds.mjs";
import { arrival, blank, click, clicks, typing } from "./visits.mjs";

const rounds = Number(process.argv[2] ?? 11);
const published = `${process.env.VXPRIVACY_DATA}/gvl/vendor-list.json`;
const list = existsSync(published) ? published : vendorList;
const ends = [];
const scope = { after: (end) => ends.push(end) };

function configuration(categories) {
  const row = (ID, subcategories) => ({ ID: String(ID), name: `Purpose ${ID}`, subcategories,
    description: "What is done for this purpose, in a sentence of common length." });
  return {
    information: { version: 1, content: "You decide." },
    global_consent: { name: "All", description: "All of them" },
    categories: Array.from({ length: categories }, (_, i) =>
      row(10 * (i + 1), [1, 2, 3, 4].map((child) => row(10 * (i + 1) + child)))),
  };
}

function print(what, value, limit, unit = "") {
  const over = limit !== undefined && value > limit ? "  ABOVE THE LIMIT" : "";
  console.log(`  ${what.padEnd(44)}${value.toFixed(2).padStart(9)}${unit.padEnd(4)}` +
    (limit === undefined ? "" : `  at most ${limit}`) + over);
}

function printCosts(told) {
  for (const [side, costs] of Object.entries(told))
    console.log(`  ${side}: ` +
      Object.entries(costs).map(([name, cost]) => `${name} ${+Number(cost).toFixed(1)}`).join(", "));
}

async function compareArrivals() {
  const texts = configuration(60);
  const few = await serve(scope, texts);
  const many = await serve(scope, configuration(600));
  const written = await serveText(scope, categoryPage(texts));
  const visit = (address) => () => arrival(scope, address);
  const told = await inTurns(rounds, { "300 rows": visit(few), "by hand": visit(written) });
  const grown = await inTurns(rounds, { "300 rows": visit(few), "3,000 rows": visit(many) });
  console.log("First paint of the category center, 300 rows");
  printCosts(told);
  printCosts(grown);
  const [ours, byHand] = Object.values(told);
  print("first paint, against the page by hand", ours.paint / byHand.paint, 1);
  print("all of it painted, against the page by hand", ours.whole / byHand.whole);
  print("processor time, against the page by hand", ours.CPU / byHand.CPU);
  const [small, large] = Object.values(grown);
  print("3,000 rows: first paint, against 300", large.paint / small.paint, 4);
  print("3,000 rows: all of it painted, against 300", large.whole / small.whole, 4);
  return { few, many };
}

// Taps on the switch of everything, or on some of its categories' and subcategories'.
async function tapSwitches(address, everything) {
  const page = await blank(scope);
  await page.goto(address);
  const switches = page.locator(".switch");
  const result = await (everything ? click(page, switches.first(), true) : clicks(page, switches, true));
  await page.context().close();
  return result;
}

async function compareTaps({ few, many }) {
  const told = await inTurns(rounds, { "all on, 300 rows": () => tapSwitches(few, true),
    "one switch, 3,000 rows": () => tapSwitches(many, false) });
  console.log("A tap in the category center");
  printCosts(told);
  const [all, one] = Object.values(told);
  print("all on, 300 rows: patch", all.patch / 1024, 4, "KiB");
  print("all on, 300 rows: painted in frame", all.frames, 2);
  print("one switch of 3,000 rows: patch", one.patch / 1024, 1, "KiB");
  print("one switch of 3,000 rows: painted in frame", one.frames, 2);
}

// From the popup to the purposes, where a button leads on to the vendors.
async function purposes(address) {
  const page = await blank(scope);
  await page.goto(address);
  await page.getByRole("button", { name: "Details" }).first().click();
  const vendors = page.getByRole("button", { name: "Partners", exact: true });
  await vendors.waitFor();
  return { page, vendors };
}

// Opens the list, then works some of its switches.
async function openList(page, opener, switches, isAnswered) {
  const opened = await click(page, opener, isAnswered);
  const switched = await clicks(page, page.locator(switches), isAnswered);
  return { ...opened, ...Object.fromEntries(
    Object.entries(switched).map(([name, cost]) => [`switch ${name}`, cost])) };
}

async function ourList(address) {
  const { page, vendors } = await purposes(address);
  const opened = await openList(page, vendors, ".box .switch", true);
  const typed = await typing(page, page.locator("#find input"), "google");
  await page.context().close();
  return { ...opened, ...typed };
}

async function listByHand(address) {
  const page = await blank(scope);
  await page.goto(address);
  const opened = await openList(page, page.locator("#open"), ".row input", false);
  await page.context().close();
  return opened;
}

async function klaroList(address) {
  const page = await blank(scope);
  await page.goto(address);
  const opener = page.locator(".cn-learn-more");
  await opener.waitFor();
  const opened = await openList(page, opener, ".cm-list-input", false);
  await page.context().close();
  return opened;
}

async function vendorsShown(address) {
  const { page, vendors } = await purposes(address);
  await click(page, vendors, true);
  const shown = await page.evaluate(() => [...document.querySelectorAll(".list .box")].map((box) => ({
    name: box.querySelector("h2").textContent, label: box.querySelector(".row > p")?.textContent,
    details: box.querySelector("button").textContent })));
  await page.context().close();
  return shown;
}

async function compareLists() {
  const address = await serve(scope, iabSample, "en", list);
  const vendors = await vendorsShown(address);
  const byHand = await serveText(scope, vendorPage(vendors));
  const { KLARO } = process.env;
  const klaro = KLARO && await serveText(scope, await klaroPage(KLARO, vendors));
  const told = await inTurns(rounds, { ours: () => ourList(address), "by hand": () => listByHand(byHand),
    ...(klaro && { klaro: () => klaroList(klaro) }) });
  console.log(`The vendor list, ${vendors.length} rows`);
  printCosts(told);
  const ours = told.ours;
  print("tap to painted, against a list by hand", ours.time / told["by hand"].time, 1);
  print("processor time, against a list by hand", ours.CPU / told["by hand"].CPU);
  if (klaro) {
    print("tap to painted, against klaro", ours.time / told.klaro.time, 0.5);
    print("processor time, against klaro", ours.CPU / told.klaro.CPU);
  }
  print("one switch: painted in frame", ours["switch frames"], 2);
  print("one switch: patch", ours["switch patch"] / 1024, 1, "KiB");
  if (klaro)
    print("one switch: processor time, against klaro", ours["switch CPU"] / told.klaro["switch CPU"], 0.25);
  print("a key of the search: painted in frame", ours["key frames"], 2);
}

try {
  await compareTaps(await compareArrivals());
  await compareLists();
} finally {
  for (const end of ends.reverse()) await end();
  await closeBrowser();
}
