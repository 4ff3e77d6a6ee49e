// A session for `vxprivacy play` that is opened here and played step by step.

import { act, post, showProblem } from "./connection.js";
import { byId, element, onPress, setText } from "./dom.js";

const kLargest = 8 << 20; // bytes, as the studio takes
const kBefore = 60; // steps shown of those that were played

let playback; // how far it was played; null: none is open
let runs = 0; // that were begun
let running = 0; // the one that goes on; 0: none does
let step = Promise.resolve(); // the one that was asked for last
let showing; // the way to the steps in view
let isStale = false;

function row({ number, do: name, text, done, note }) {
  const item = element("li", {
    "data-played": number <= playback.played ? "" : undefined,
    "data-done": String(done),
    "aria-current": number === playback.played ? "step" : undefined,
  }, element("span", { text: String(number) }), element("b", { text: name }), element("code", { text, title: text }));
  if (note) item.append(element("em", { text: note }));
  return item;
}

function keepInView(list) {
  const current = list.querySelector("[aria-current]") ?? list.firstElementChild;
  if (!current) return;
  const top = current.offsetTop - list.offsetTop;
  const isSeen = top >= list.scrollTop && top + 2 * current.offsetHeight <= list.scrollTop + list.clientHeight;
  if (!isSeen) list.scrollTop = top - list.clientHeight / 3;
}

async function fetchSteps() {
  const response = await fetch(`/api/session/steps?from=${Math.max(1, playback.played - kBefore)}`).catch(() => undefined);
  if (!response?.ok) return; // it was closed meanwhile
  const steps = await response.json();
  if (!playback) return;
  const list = byId("playback-steps");
  list.replaceChildren(...steps.map(row));
  keepInView(list);
}

// One request at a time, and another when something came meanwhile.
function showSteps() {
  if (showing) {
    isStale = true;
    return;
  }
  isStale = false;
  showing = fetchSteps().finally(() => {
    showing = undefined;
    if (isStale && playback) showSteps();
  });
}

const isAtEnd = () => playback.played >= playback.total;

function progress({ played, total, left }) {
  const undone = left > 0 ? `, ${left} not or not whole` : "";
  return played === 0 ? `${total} steps` : `${played} of ${total} steps played${undone}`;
}

function showButtons() {
  const mayPlay = playback && !isAtEnd() && !running;
  byId("playback-next").disabled = !mayPlay;
  byId("playback-all").disabled = !mayPlay;
  byId("playback-stop").disabled = !running;
}

function playNext() {
  step = act("session/next");
  return step;
}

async function run() {
  const mine = running = ++runs;
  showButtons();
  for (let state = { playback }; running === mine && state?.playback && state.playback.played < state.playback.total;)
    state = await playNext();
  if (running === mine) stop();
}

function stop() {
  running = 0;
  showButtons();
}

function showSize(bytes) {
  return `${Math.ceil(bytes / (1 << 20))} MiB`;
}

async function open(file) {
  if (file.size > kLargest)
    return showProblem(`${file.name} has ${showSize(file.size)}; a session has ${showSize(kLargest)} at most.`);
  stop();
  byId("tab-timeline").click();
  byId("open-session").ariaBusy = "true";
  await step; // or it would be the new session's
  await post("session", file, { file }).then(() => focusUnlessElsewhere("playback-next"), () => {});
  byId("open-session").ariaBusy = "false";
  return undefined;
}

// It may have taken a while, and the reader be elsewhere by now.
function focusUnlessElsewhere(id) {
  const focused = document.activeElement;
  if (focused === document.body || focused === byId("open-session") || byId("playback").contains(focused)) byId(id).focus();
}

async function close() {
  stop();
  await step;
  await act("session/close");
  focusUnlessElsewhere("open-session");
}

// A file that is dropped beside every field would take the place of this page.
function takeDrops() {
  const hasFiles = ({ dataTransfer }) => dataTransfer?.types.includes("Files");
  const mark = (on) => document.body.classList.toggle("dropping", on);
  addEventListener("dragover", (event) => {
    if (!hasFiles(event)) return;
    event.preventDefault();
    mark(true);
  });
  addEventListener("dragleave", ({ relatedTarget }) => { if (!relatedTarget) mark(false); });
  addEventListener("drop", (event) => {
    mark(false);
    if (!hasFiles(event)) return;
    event.preventDefault();
    if (event.dataTransfer.files.length > 0) open(event.dataTransfer.files[0]);
  });
}

export function wirePlayback() {
  const file = byId("session-file");
  byId("open-session").addEventListener("click", () => file.click());
  file.addEventListener("change", () => {
    if (file.files.length > 0) open(file.files[0]);
    file.value = ""; // the same one may be opened again
  });
  onPress(byId("playback-next"), playNext);
  byId("playback-all").addEventListener("click", run);
  byId("playback-stop").addEventListener("click", stop);
  onPress(byId("playback-close"), close);
  takeDrops();
}

export function renderPlayback(state) {
  const before = playback;
  playback = state.playback ?? null;
  byId("playback").hidden = !playback;
  showButtons();
  if (!playback) return;
  setText(byId("playback-progress"), progress(playback));
  if (before?.opened !== playback.opened || before?.played !== playback.played) showSteps();
}
