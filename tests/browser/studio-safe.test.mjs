// The studio beside other pages of the same browser: pages of another origin, and many of its own.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { createServer } from "node:http";
import { once } from "node:events";
import { closeBrowser } from "./browser.mjs";
import { openStudio } from "./studio.mjs";

after(closeBrowser);

// A page of another origin on loopback, which a browser takes for the same site.
async function openStranger(t, context) {
  const server = createServer((request, response) => {
    response.setHeader("Content-Type", "text/html");
    response.end("<!doctype html><title>Stranger</title><p>");
  }).listen(0, "127.0.0.1");
  await once(server, "listening");
  t.after(() => { server.closeAllConnections(); server.close(); });
  const page = await context.newPage();
  await page.goto(`http://127.0.0.1:${server.address().port}/`);
  return page;
}

const timeline = (page) => page.evaluate(async () => (await fetch("/api/timeline")).json());
const backendOf = (page) => page.evaluate(async () =>
  (await (await fetch("/api/state")).json()).network.address);

test("a page of another origin reads nothing, changes nothing and leaves no trace", async (t) => {
  const page = await openStudio(t);
  await page.getByText("First start").waitFor();
  const targets = { studio: new URL(page.url()).origin, backend: await backendOf(page) };
  const before = await timeline(page);
  const stranger = await openStranger(t, page.context());
  const seen = await stranger.evaluate(async ({ studio, backend }) => {
    const paths = [`${studio}/`, `${studio}/api/state`, `${studio}/api/timeline`, `${studio}/api/events`,
      `${studio}/api/accept`, `${studio}/center/`, `${backend}/mobile/12/5/privacy.json`,
      `${backend}/v2/vendor-list.json`, `${backend}/privacy-consent/`, `${backend}/any`];
    const bodies = ["{}", "x".repeat(4_000_000), new URLSearchParams({ a: "b" })];
    const seen = [];
    const tried = (promise) => promise.then(async (answer) => {
      if (answer.type !== "opaque") seen.push([answer.url, answer.status, await answer.text()]);
    }, () => {});
    let count = 0;
    for (const path of paths) {
      for (const mode of ["cors", "no-cors"]) {
        await tried(fetch(path, { mode }));
        count += 1;
        for (const body of bodies) {
          await tried(fetch(path, { mode, method: "POST", body }));
          count += 1;
        }
      }
      await tried(fetch(path, { method: "PUT", body: "{}", headers: { "X-Studio-Token": "0" } }));
      for (const [tag, from] of [["img", "src"], ["script", "src"], ["link", "href"], ["iframe", "src"], ["object", "data"], ["video", "src"]]) {
        const node = document.createElement(tag);
        if (tag === "link") node.rel = "stylesheet";
        const settled = new Promise((resolve) => {
          node.onload = () => {
            if (tag !== "iframe" && tag !== "object") seen.push([tag, path]);
            resolve();
          };
          node.onerror = resolve;
          setTimeout(resolve, 3000);
        });
        node[from] = path;
        document.body.append(node);
        await settled;
        try { if (node.contentDocument?.body?.textContent) seen.push([tag, path]); } catch { /* as it should be */ }
        node.remove();
        count += 1;
      }
      const frame = document.createElement("iframe"); // a form needs no fetch
      frame.name = "target";
      const form = document.createElement("form");
      Object.assign(form, { method: "post", action: path, enctype: "text/plain", target: "target" });
      form.append(Object.assign(document.createElement("input"), { name: '{"a":"', value: '"}' }));
      document.body.append(frame, form);
      const sent = new Promise((resolve) => { frame.onload = resolve; setTimeout(resolve, 3000); });
      form.submit();
      await sent;
      frame.remove();
      navigator.sendBeacon(path, "{}");
      const source = new EventSource(path);
      await new Promise((resolve) => {
        source.onopen = () => { seen.push(["EventSource", path]); resolve(); };
        source.onerror = resolve;
      });
      source.close();
      count += 4;
    }
    return { seen, count };
  }, targets);
  t.diagnostic(`${seen.count} requests of another origin`);
  assert.deepEqual(seen.seen, []);
  assert.deepEqual(await timeline(page), before);
});

test("a link of another site leads to the page, which nobody may frame", async (t) => {
  const page = await openStudio(t);
  const stranger = await openStranger(t, page.context());
  await stranger.evaluate((href) => {
    document.body.append(Object.assign(document.createElement("a"), { href, textContent: "studio" }));
  }, page.url());
  await stranger.getByText("studio").click();
  await stranger.getByText("First start").waitFor();
});

test("eight tabs are all up to date, also when the one that listens is closed", async (t) => {
  const first = await openStudio(t);
  const tabs = [first];
  while (tabs.length < 8) {
    const page = await first.context().newPage();
    await page.goto(first.url());
    tabs.push(page);
  }
  const expectEverywhere = async (send) => {
    const name = `hit ${tabs.length}`;
    await send.locator("#hit-name").fill(name);
    await send.locator("#hit-form button").click();
    for (const tab of tabs)
      await tab.locator("#hits").getByText(name).first().waitFor({ state: "attached" });
  };
  await expectEverywhere(tabs[7]);
  while (tabs.length > 5) {
    await tabs.shift().close(); // the first is the one that listens
    await expectEverywhere(tabs[1]);
  }
  const ids = await tabs[3].evaluate(async () => (await (await fetch("/api/timeline")).json()).length);
  for (const tab of tabs) // none was lost, none came twice
    assert.equal(await tab.locator("#timeline article").first().getAttribute("aria-setsize"), String(ids));
});

test("whatever answers the stream, it is opened anew", async (t) => {
  const page = await openStudio(t);
  await page.getByText("First start").waitFor();
  const other = await page.context().newPage();
  for (const answer of [{ status: 503, body: "{}" }, { status: 200, body: "no stream" }, undefined]) {
    let refused = 0;
    await other.route("**/api/events**", (route) => {
      refused += 1;
      return answer ? route.fulfill(answer) : route.abort();
    });
    await other.goto(page.url());
    await page.goto("about:blank"); // the other tab is to listen now
    while (refused < 2) await other.waitForTimeout(50);
    await other.getByText("Disconnected").waitFor();
    await other.unrouteAll({ behavior: "ignoreErrors" });
    await other.getByText("Connected", { exact: true }).waitFor();
    await other.getByRole("button", { name: "Accept all" }).click();
    await other.getByText("Consent given").waitFor();
    await page.goto(other.url());
  }
});
