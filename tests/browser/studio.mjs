// The studio in a browser.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { createRequire } from "node:module";
import { createInterface } from "node:readline";
import { mkdtemp, readFile, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { open } from "./browser.mjs";
import { expectReplay } from "./replay.mjs";

const axe = await readFile(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

/// Starts a studio on a store of its own, with further arguments if there are some, and opens its
/// page.
export async function openStudio(t, options = { width: 1280, height: 800 }, args = []) {
  const directory = await mkdtemp(join(tmpdir(), "studio-"));
  const studio = spawn(process.env.VXPRIVACY,
    ["studio", "--no-browser", "--port", "0", "--store", join(directory, "store.sqlite"), ...args],
    { stdio: ["ignore", "pipe", "inherit"] });
  let address;
  t.after(async () => {
    try {
      if (address) await expectReplay(address);
    } finally {
      const ended = new Promise((resolve) => studio.once("exit", resolve));
      studio.kill();
      await ended;
      await rm(directory, { recursive: true });
    }
  });
  for await (const line of createInterface(studio.stdout))
    if (line.trim().startsWith("page ")) {
      address = line.trim().split(/ +/)[1];
      return open(t, address, options);
    }
}

/// axe finds nothing, and nothing runs out sideways.
export async function expectSound(page, width) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate("axe.run({ iframes: false })");
  assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map((n) => n.html)]), []);
  assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
}

/** What went wrong in a page whose application was killed: what the center's still tells it is refused. */
export const failuresButRefusals = (page) =>
  page.failures.filter((failure) => !failure.includes("409 (Conflict)"));

/**
 * The entries that match, of the kind if one is said, once there is one. The page has only those
 * near the timeline's view.
 */
export async function happened(page, pattern, kind) {
  const address = new URL("/api/timeline", page.url()).href;
  for (;;) {
    const entries = (await (await page.request.get(address)).json())
      .filter((entry) => (!kind || entry.kind === kind) && JSON.stringify([entry.title, entry.body]).match(pattern));
    if (entries.length > 0) return entries;
    await page.waitForTimeout(50);
  }
}

/** At a phone's width one column is in the page at a time. */
export async function showColumn(page, name) {
  const button = page.getByRole("navigation", { name: "Shown" }).getByRole("button", { name });
  if (await button.isVisible()) await button.click();
}

const isStep = (line) => line !== "" && !line.startsWith("#");
const isQuestion = (line) => ["store", "sdkData", "screen", "model"].includes(JSON.parse(line).do);

/** The studio's session, exported, opened in its page and run, is exported as the same steps; then all is as it was. */
export async function expectSameWhenOpened(page) {
  const ask = async (path) => (await page.request.get(new URL(path, page.url()).href)).text();
  const storeOf = async () => JSON.parse(await ask("/api/state")).application.store;
  const stepsIn = (script) => script.split("\n").filter(isStep);
  const deedsIn = (script) => stepsIn(script).filter((line) => !isQuestion(line));
  const [store, script] = [await storeOf(), await ask("/api/session")];
  const steps = stepsIn(script).length;
  await page.locator("#session-file").setInputFiles({ name: "session.jsonl", mimeType: "text/plain", buffer: Buffer.from(script) });
  await page.getByText(`${steps} steps`, { exact: true }).waitFor();
  await page.getByRole("button", { name: "Run all" }).click();
  await page.getByText(`${steps} of ${steps} steps played`, { exact: true }).waitFor();
  await page.getByRole("list", { name: "Steps of the session" }).locator("[aria-current]")
    .getByText(String(steps), { exact: true }).waitFor();
  assert.deepEqual(deedsIn(await ask("/api/session")), deedsIn(script));
  const closed = page.waitForResponse("**/api/session/close");
  await page.getByRole("button", { name: "Close session" }).click();
  await closed;
  await page.locator("#playback").waitFor({ state: "hidden" });
  assert.deepEqual(await storeOf(), store);
}
