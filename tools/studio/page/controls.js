// What can be done to the process, the clock and the network.

import { byId, fillList, onPress, setText } from "./dom.js";
import { act } from "./connection.js";

const kDay = 86_400_000;
let clockOffset = 0;
let networkOn = true;

function describeOffset(offset) {
  const days = Math.round((offset / kDay) * 100) / 100;
  if (days === 0) return "";
  return `${days > 0 ? "+" : "\u2212"}${Math.abs(days)} ${Math.abs(days) === 1 ? "day" : "days"}`;
}

function showClock() {
  setText(byId("clock-now"), new Date(Date.now() + clockOffset)
    .toLocaleString(undefined, { dateStyle: "medium", timeStyle: "short" }));
}

function wireReset() {
  const dialog = byId("reset-dialog");
  byId("reset").addEventListener("click", () => dialog.showModal());
  byId("reset-cancel").addEventListener("click", () => dialog.close());
  byId("reset-confirm").addEventListener("click", () => { dialog.close(); act("reset"); });
}

export function wireControls() {
  for (const button of document.querySelectorAll("[data-post]"))
    onPress(button, () => act(button.dataset.post));
  for (const button of document.querySelectorAll("[data-days]"))
    button.addEventListener("click", () => act("clock", { advance: Number(button.dataset.days) }));
  for (const button of document.querySelectorAll("[data-iab]"))
    button.addEventListener("click", () => act("mode", { iab: button.dataset.iab === "true" }));
  byId("clock-form").addEventListener("submit", (event) => {
    event.preventDefault();
    act("clock", { advance: byId("clock-days").valueAsNumber });
  });
  byId("clock-back").addEventListener("click", () => act("clock", { offset: 0 }));
  byId("network").addEventListener("click", () => act("network", { on: !networkOn }));
  wireReset();
  setInterval(showClock, 1000);
}

export function renderControls({ application, clock, network, session, beacons }) {
  clockOffset = clock.offset;
  setText(byId("clock-offset"), describeOffset(clockOffset));
  byId("clock-back").disabled = clockOffset === 0;
  showClock();
  for (const button of document.querySelectorAll("[data-iab]"))
    button.setAttribute("aria-pressed", String(button.dataset.iab === String(session.iab)));

  const waiting = application?.waitingBeacons ?? 0;
  networkOn = network?.on ?? true;
  byId("network").setAttribute("aria-checked", String(networkOn));
  byId("network").disabled = session.live;
  setText(byId("network-hint"), session.live ? "The real hosts, over the real network."
    : !networkOn ? "Connections are refused. Beacons wait in the outbox."
      : waiting > 0 ? "The outbox tries again by itself; the log says when." : "");
  fillList(byId("beacons"), [
    ["Beacons waiting", waiting],
    ["arrived", session.live ? "unknown" : beacons?.arrived ?? 0],
  ]);
}
