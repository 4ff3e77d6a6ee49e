// Visits of pages in Chromium, each in a profile of its own, and what they cost.
import { open } from "../../tests/browser/browser.mjs";
import { medians } from "./rounds.mjs";

// Runs in the page before all else.
function instrument() {
  const answers = new Map(); // by the element that was operated
  const frame = () => new Promise(requestAnimationFrame);
  const { fetch } = globalThis;

  globalThis.fetch = async (address, options) => {
    const answer = await fetch(address, options);
    const { tap, set } = JSON.parse(options?.body ?? "{}");
    const told = answers.get(tap ?? set);
    if (!told) return answer;
    const patch = await answer.text();
    scheduler.postTask(() => told(patch.length), { priority: "user-blocking" }); // shown by then
    return { ok: answer.ok, status: answer.status, text: async () => patch };
  };

  // Until the frame after the one that paints what became of an action, and which that one was at 60 a
  // second. `answer` is awaited before.
  const frameLength = 1000 / 60;
  const measured = async (act, answer) => {
    const start = performance.now();
    act();
    const patch = await answer;
    await frame();
    await frame();
    const time = performance.now() - start;
    return { time, frames: Math.max(1, Math.ceil((time - 1) / frameLength) - 1), patch };
  };

  globalThis.bench = {
    // A click, painted with the host's answer where `isAnswered`.
    click: (element, isAnswered) => measured(() => element.click(),
      isAnswered && new Promise((told) => answers.set(element.id, told))),
    type: (field, text) => measured(() => {
      field.value = text;
      field.dispatchEvent(new InputEvent("input", { bubbles: true }));
    }),
    async painted() {
      if (document.readyState !== "complete") await new Promise((done) => addEventListener("load", done));
      await frame();
      await frame();
      const time = performance.now();
      const isPainted = () => performance.getEntriesByName("first-contentful-paint").length;
      while (!isPainted()) await frame(); // noted a little later
      return time;
    },
  };
}

/// A blank page that measures what is shown in it.
export async function blank(scope) {
  const page = await open(scope, "about:blank", { reducedMotion: "no-preference" });
  await page.addInitScript(instrument);
  page.session = await page.context().newCDPSession(page);
  await page.session.send("Performance.enable", { timeDomain: "threadTicks" });
  return page;
}

/// Milliseconds of processor time that the page's main thread has taken, and for what.
async function spent(page) {
  const { metrics } = await page.session.send("Performance.getMetrics");
  const of = (name) => 1000 * metrics.find((metric) => metric.name === name).value;
  return { CPU: of("TaskDuration"), script: of("ScriptDuration"), style: of("RecalcStyleDuration"),
    layout: of("LayoutDuration") };
}

/// From navigation to the first paint, and until all of the page is there and painted.
export async function arrival(scope, address) {
  const page = await blank(scope);
  await page.goto(address, { waitUntil: "commit" });
  const whole = await page.evaluate(() => bench.painted());
  const [paint, answered, parsed, elements] = await page.evaluate(() => {
    const { responseEnd, domInteractive } = performance.getEntriesByType("navigation")[0];
    const { startTime } = performance.getEntriesByName("first-contentful-paint")[0];
    return [startTime, responseEnd, domInteractive, document.querySelectorAll("*").length];
  });
  const result = { paint, whole, answered, parsed, elements, ...await spent(page) };
  await page.context().close(); // what is open takes time from the next visit
  return result;
}

/// From a click on `locator` to the painted outcome. `isAnswered`: by a host.
export async function click(page, locator, isAnswered) {
  await page.waitForTimeout(200); // what went before is over
  const before = await spent(page);
  const result = await locator.evaluate((element, host) => bench.click(element, host), isAnswered);
  await page.waitForTimeout(200);
  const after = await spent(page);
  for (const name of Object.keys(after)) result[name] = after[name] - before[name];
  return result;
}

/// Ten clicks on some of the elements, one after the other has come to rest; medians, and a click's
/// share of the processor time beyond that of as many clicks on nothing.
export async function clicks(page, locator, isAnswered) {
  const ten = async (idle) => {
    const before = await spent(page);
    const results = await locator.evaluateAll(async (elements, [idle, host]) => {
      const results = [];
      for (let i = 0; i < 10; ++i) {
        const element = idle ? document.createElement("i") : elements[2 + i % 3];
        results.push(await bench.click(element, host && !idle));
        await new Promise((done) => setTimeout(done, 300));
      }
      return results;
    }, [idle, isAnswered]);
    return { results, CPU: ((await spent(page)).CPU - before.CPU) / 10 };
  };
  const clicked = await ten(false);
  const nothing = await ten(true);
  const { time, frames, patch } = medians(clicked.results);
  return { time, frames, patch, CPU: clicked.CPU - nothing.CPU };
}

/// Letters of a word, typed into a field one by one; medians, and what the slowest took.
export async function typing(page, field, word) {
  const keys = await field.evaluate(async (element, word) => {
    const keys = [];
    for (let i = 1; i <= word.length; ++i) {
      keys.push(await bench.type(element, word.slice(0, i)));
      await new Promise((done) => setTimeout(done, 300));
    }
    return keys;
  }, word);
  const { time, frames } = medians(keys);
  return { "key time": time, "key frames": frames, "slowest key": Math.max(...keys.map((key) => key.time)) };
}
