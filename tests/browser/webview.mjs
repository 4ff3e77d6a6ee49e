// A page in a web view of the application's own, with frames, and what it hears of the consent.
import { open } from "./browser.mjs";

const site = "https://app.test/";
const html = (body, headers) => ({ contentType: "text/html", body, headers });

/// A page under a strict policy, which runs `scripts` before its own, with frames of two other
/// origins, one of them opaque.
export async function webView(t, ...scripts) {
  const page = await open(t, "about:blank");
  await page.route(site, (route) => route.fulfill(html(
    `<!doctype html><title>Article</title><p>Text</p><iframe src="https://ads.test/"></iframe>
     <iframe sandbox="allow-scripts" src="https://ads.test/"></iframe>`,
    { "Content-Security-Policy": "default-src 'none'; frame-src https://ads.test" })));
  await page.route("https://ads.test/", (route) => route.fulfill(html("<!doctype html><p>Ad</p>")));
  for (const script of scripts) await page.addInitScript(script);
  await page.goto(site);
  return { page, frames: page.frames().filter((frame) => frame.url() === "https://ads.test/") };
}

/// Calls __tcfapi and collects what it answers, as [first, second] of each call of the callback.
export function call(page, ...given) {
  return page.evaluate(([command, version, parameter]) => {
    const answers = [];
    globalThis.heard ??= [];
    heard.push(answers);
    __tcfapi(command, version, (...answer) => answers.push(answer), parameter);
    return answers;
  }, given);
}
export const heard = (page) => page.evaluate(() => heard);

/// The numbers that are true in a part of TCData.
export const idsOf = (flags) => Object.entries(flags).filter(([, is]) => is).map(([id]) => Number(id));
