// The way to the host: what the user does goes out in order, one event after the other, each until it
// has arrived.
//
// A message channel is an object with send(event), which takes an event's text and gives a promise
// of the patch's text. An application may set globalThis.privacyChannel to its own before this
// module runs, or answer the web view's message handler "privacy"; else events are posted.

import { clearAlert, showAlert } from "./notices.js";
import { show } from "./showing.js";

const { page, events } = document.documentElement.dataset;
const run = String(Math.random()); // a page that a browser kept has another in each of its tabs
const patience = 20_000; // milliseconds
const longestPause = 30_000;

function webViewChannel() {
  const handler = globalThis.webkit?.messageHandlers?.privacy;
  return handler && { send: (event) => handler.postMessage(event) };
}

const postingChannel = {
  async send(event) {
    const answer = await fetch(events, {
      method: "POST",
      headers: { "Content-Type": "application/json" },
      body: event,
      keepalive: event.length < 10_000, // also when the user leaves meanwhile
      signal: AbortSignal.timeout(patience),
    });
    if (answer.status === 404 || answer.status === 410) return '{"gone":true}';
    if (!answer.ok) throw new Error(`${events} answered ${answer.status}`);
    return answer.text();
  },
};

const channel = globalThis.privacyChannel ?? webViewChannel() ?? postingChannel;

const queue = []; // the first is on its way, or is to be sent again
let number = 0;
let tryNow = () => {};

/** Sends what the user did: {tap: id}, {set: id, on} or {scroll: id, x, y}. */
export function send(event) {
  const last = queue.length > 1 ? queue.at(-1) : undefined;
  if (event.scroll && last?.scroll === event.scroll) return Object.assign(last, event);
  queue.push({ page, run, n: ++number, ...event });
  if (queue.length === 1) deliver();
  else tryNow();
}

/** Asks for what changed on the screen by other hands. */
export function update() {
  if (queue.length < 2) send({}); // else what waits will bring it
}

export const tapIsUnderWay = (id) => queue.some((event) => event.tap === id);

async function deliver() {
  while (queue.length > 0) {
    const patch = await answerTo(queue[0]);
    if (patch.gone) return giveUp();
    const event = queue.shift();
    show(patch, { event, wanted: queue.filter(({ set }) => set) });
  }
}

// An event that is sent again has its old number, so that the host does it only once.
async function answerTo(event) {
  for (let pause = 1000; ; pause = Math.min(2 * pause, longestPause)) {
    try {
      const patch = JSON.parse(await channel.send(JSON.stringify(event)));
      clearAlert();
      return patch;
    } catch (error) {
      console.warn(error);
    }
    await new Promise((resolve) => {
      tryNow = resolve;
      showAlert("lost", tryNow);
      setTimeout(resolve, pause);
    });
  }
}

addEventListener("online", () => tryNow());

// The screen that this page showed is there no more, and with it what was still to be sent.
function giveUp() {
  queue.length = 0;
  document.querySelector(".screen").disabled = true;
  showAlert("gone", () => location.reload());
}
