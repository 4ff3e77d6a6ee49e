// What the tests share: the server of a configuration, and pages of Debian's Chromium.
import { spawn } from "node:child_process";
import { once } from "node:events";
import { createInterface } from "node:readline";
import { mkdtemp, rm, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

export const sample = fileURLToPath(new URL("../../samples/category.json", import.meta.url));
export const iabSample = fileURLToPath(new URL("../../samples/iab.json", import.meta.url));
export const vendorList =
  fileURLToPath(new URL("../../samples/gvl/vendor-list.json", import.meta.url));
export const listOfFormat3 =
  fileURLToPath(new URL("../../samples/gvl3/vendor-list.json", import.meta.url));
export const french = fileURLToPath(new URL("french.json", import.meta.url));

/// Starts the server of a configuration, a file or an object; resolves to its address. With a
/// vendor list, and a translation of it if there is one, it shows the IAB privacy center.
export async function serve(t, configuration, language = "en", ...lists) {
  const documents = await Promise.all([configuration, ...lists].map((each) => fileOf(t, each)));
  const server = spawn(process.env.SURFACE_SERVER, [documents[0], language, ...documents.slice(1)], {
    stdio: ["ignore", "pipe", "inherit"],
  });
  t.after(() => server.kill());
  const [address] = await once(createInterface(server.stdout), "line");
  return address;
}

async function fileOf(t, document) {
  if (typeof document === "string") return document;
  const directory = await mkdtemp(join(tmpdir(), "surface-"));
  t.after(() => rm(directory, { recursive: true }));
  const file = join(directory, "document.json");
  await writeFile(file, JSON.stringify(document));
  return file;
}

let launched;
function browser() {
  launched ??= chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--disable-background-networking",
      "--disable-component-update", "--disable-sync", "--no-first-run"],
  });
  return launched;
}

export async function closeBrowser() {
  await (await launched)?.close();
}

/// A page of its own profile, at `address`. A text size of 2 is 200 %.
export async function open(t, address, { width = 390, height = 844, textSize = 1, ...rest } = {}) {
  const context = await (await browser()).newContext(
    { viewport: { width, height }, reducedMotion: "reduce", ...rest });
  t.after(() => context.close());
  context.setDefaultTimeout(100_000); // a slow machine is no fault
  const page = await context.newPage();
  page.failures = [];
  page.on("pageerror", (error) => page.failures.push(String(error)));
  page.on("console", (message) => {
    if (message.type() === "error") page.failures.push(message.text());
  });
  if (textSize !== 1) await setTextSize(page, textSize);
  await page.goto(address);
  return page;
}

async function setTextSize(page, textSize) {
  page.session ??= await page.context().newCDPSession(page);
  await page.session.send("Page.enable");
  await page.session.send("Page.setFontSizes", { fontSizes: { standard: 16 * textSize } });
}

/// The window and the text of a page change their sizes; all is laid out then.
export async function resize(page, { width, height = 844, textSize = 1 }) {
  await page.setViewportSize({ width, height });
  await setTextSize(page, textSize);
  await page.evaluate(() =>
    new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
}

/// Leads a page from the popup of the IAB center through its five screens, and gives the name of each
/// while it is shown. One of the vendors is opened.
export async function* iabScreens(page) {
  yield "popup";
  await tap(page, page.locator(".answer").first());
  yield "purposes";
  await tap(page, page.locator(".feet > .button").nth(1));
  yield "legal text";
  await tap(page, page.locator("[data-back]"));
  await tap(page, page.locator(".onward"));
  await tap(page, page.locator("[aria-expanded]").nth(1));
  yield "vendors";
  await page.request.get(new URL("detail", page.url()).href);
  await page.evaluate(async () => (await import("/surface.js")).update());
  await page.locator("[data-back]").waitFor();
  yield "vendor details";
}

/// Operates a button or switch, with the mouse if nothing else is said, and gives the patch that
/// answers it. What the page reports beside it, its scrolling for instance, is passed over.
export async function tap(page, locator, operate = () => locator.click()) {
  const id = await locator.getAttribute("id");
  const [answer] = await Promise.all([
    page.waitForResponse((response) => {
      const event = response.request().postDataJSON() ?? {};
      return id === (event.tap ?? event.set);
    }),
    operate(),
  ]);
  return answer.json();
}

export const switchOf = (root, name) => root.getByRole("switch", { name, exact: true });

/// Waits until the switches of a page or frame stand as told: {"All purposes": true, ...}.
export async function expectStates(root, states) {
  for (const [name, checked] of Object.entries(states))
    await root.getByRole("switch", { name, exact: true, checked }).waitFor();
}

/// What the doors recorded since the last question.
export async function recorded(address) {
  return (await fetch(`${address}/recorded`)).json();
}
